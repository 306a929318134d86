#include "CmdDBLogger/RejectedStatement.h"

#include "MfdServices/GravaLog.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

void ReportRejectedStatement(EEscCmd command, const char* errorText, const char* sql)
{
    if (errorText == nullptr) {
        errorText = "";
    }

    // 200 bytes hold the message's own words and the code.
    const std::size_t size = std::strlen(errorText) + 200;
    char* message = static_cast<char*>(std::malloc(size));
    if (message == nullptr) {
        return;
    }
    std::memset(message, 0, size);
    std::snprintf(message, size,
                  "DBLoggerExecuteSQL: Erro executando SQL Code. Comando:'%d', Erro:'%s'",
                  static_cast<int>(command), errorText);
    Vindral_GravaLog(message);
    // The log takes char* but only reads.
    Vindral_GravaLog(const_cast<char*>(sql));
    std::free(message);
}
