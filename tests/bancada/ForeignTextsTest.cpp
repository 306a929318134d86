#include "bancada/ForeignTexts.h"

#include "tests/bancada/InPortuguese.h"

#include <cerrno>
#include <gtest/gtest.h>
#include <sqlite3.h>
#include <system_error>

namespace bancada_test
{
namespace
{

using namespace bancada;

TEST(ForeignTexts, InEnglishTheyAreAsTheyAre)
{
    for (const char* text : {"database is locked", "it has no name", "Permission denied",
                             "unable to open database file (Permission denied)",
                             "its schema is of version 9, and this program knows those up to 3",
                             "no such table: x", ""}) {
        EXPECT_EQ(TrForeign(text), text);
    }
}

TEST(ForeignTexts, KnownReasonsHaveTheLanguageOfTheReader)
{
    const InPortuguese portuguese;
    EXPECT_EQ(TrForeign("it has no name"), "ele não tem nome");
    EXPECT_EQ(TrForeign("Permission denied"), "permissão negada");
    EXPECT_EQ(TrForeign("database or disk is full"), "o banco de dados ou o disco está cheio");
}

TEST(ForeignTexts, WhatIsFilledInStandsAtItsPlace)
{
    const InPortuguese portuguese;
    EXPECT_EQ(TrForeign("it carries command number 12"), "ele traz o número de comando 12");
    EXPECT_EQ(TrForeign("/a (b) is there already"), "/a (b) já existe");
    EXPECT_EQ(TrForeign("its schema is of version 9, and this program knows those up to 3"),
              "o esquema é da versão 9, e este programa conhece até a 3");
    EXPECT_EQ(TrForeign("it is not a logging database: it has no column moeda.num_ecf"),
              "não é um banco de dados de registro: não tem a coluna moeda.num_ecf");
}

TEST(ForeignTexts, TheSystemsReasonStandsBehindTheEngines)
{
    const InPortuguese portuguese;
    EXPECT_EQ(TrForeign("unable to open database file (Is a directory)"),
              "não é possível abrir o arquivo do banco de dados (é um diretório)");
    EXPECT_EQ(TrForeign("disk I/O error (no reason at all)"),
              "erro de leitura ou gravação do disco (no reason at all)");
}

TEST(ForeignTexts, WhatIsNotKnownStays)
{
    const InPortuguese portuguese;
    for (const char* text : {"", "no such table: x", "it has no name!", "a it has no name",
                             "it carries command number ", "its schema is of version 9",
                             " is there already", "near \"(\": syntax error", "()", " ("}) {
        EXPECT_EQ(TrForeign(text), text);
    }
}

// What the engine says of a result code alone.
TEST(ForeignTexts, TheEnginesOwnReasonsAreKnown)
{
    const InPortuguese portuguese;
    for (const int code : {SQLITE_PERM, SQLITE_BUSY, SQLITE_LOCKED, SQLITE_NOMEM, SQLITE_READONLY,
                           SQLITE_INTERRUPT, SQLITE_IOERR, SQLITE_CORRUPT, SQLITE_FULL,
                           SQLITE_CANTOPEN, SQLITE_PROTOCOL, SQLITE_SCHEMA, SQLITE_NOTADB}) {
        EXPECT_NE(TrForeign(sqlite3_errstr(code)), sqlite3_errstr(code)) << code;
    }
}

TEST(ForeignTexts, TheSystemsReasonHasItsNumber)
{
    EXPECT_EQ(SystemReason(ENOENT), "No such file or directory");
    const InPortuguese portuguese;
    EXPECT_EQ(SystemReason(ENOENT), "arquivo ou diretório não encontrado");
    EXPECT_EQ(SystemReason(ENOSPC), "não há espaço no dispositivo");
    for (const int number : {EPERM,   EIO,    ENOMEM,       EACCES,    EBUSY,  EEXIST,  EXDEV,
                             ENOTDIR, EISDIR, EINVAL,       ENFILE,    EMFILE, ETXTBSY, EFBIG,
                             EROFS,   EPIPE,  ENAMETOOLONG, ENOTEMPTY, ELOOP,  EAGAIN,  EDQUOT}) {
        EXPECT_NE(SystemReason(number), std::generic_category().message(number)) << number;
    }
}

} // namespace
} // namespace bancada_test
