#include "bancada/cli/TapeHelp.h"

#include "bancada/Unusable.h"
#include "bancada/cli/Configura.h"
#include "bancada/cli/DocumentSection.h"
#include "bancada/comandos/Catalogue.h"
#include "bancada/fita/FieldTable.h"
#include "bancada/registro/Registro.h"

namespace bancada
{
namespace
{

std::string Section(const std::string& name, const std::string& head, const FieldTable& table)
{
    std::string text = "### `" + name + "`\n\n" + head + "\n";
    if (!table.Fields().empty()) {
        text += "\n" + MarkdownTable(table.Fields());
    }
    return text + "\n```json\n" + ExampleLine(name, table.Fields()) + "\n```\n";
}

std::string Capitalised(std::string text)
{
    if (!text.empty() && text[0] >= 'a' && text[0] <= 'z') {
        text[0] = static_cast<char>(text[0] - 'a' + 'A');
    }
    return text;
}

std::string DirectiveSection()
{
    Registro registro;
    Configura settings(registro);
    FieldTable table;
    settings.Fields(table);
    return Section(CONFIGURA,
                   Capitalised(CONFIGURA_RESUMO) + ". A setting that is not given stays as it is.",
                   table);
}

std::string CommandSection(const CatalogueEntry& item)
{
    Registro registro;
    FieldTable table;
    item.make(registro)->Fields(table);
    std::string head = Capitalised(item.summary) + ". Class `" + item.commandClass + "`, code " +
                       std::to_string(item.code);
    head += *item.tables == '\0' ? "; logs nothing" : std::string("; logs into ") + item.tables;
    if (*item.documentType != '\0') {
        head += std::string(", document type ") + item.documentType;
    }
    return Section(item.name, head + ".", table);
}

} // namespace

std::string TapeHelp()
{
    std::string text = DirectiveSection();
    for (const CatalogueEntry& item : Catalogue()) {
        text += "\n" + CommandSection(item);
    }
    return text;
}

std::string CommandHelp(std::string_view command)
{
    if (command == CONFIGURA) {
        return DirectiveSection();
    }
    const CatalogueEntry* item = FindComando(command);
    if (item == nullptr) {
        throw Unusable("there is no command \"" + std::string(command) + "\"");
    }
    return CommandSection(*item);
}

std::string WithTapeHelp(const std::string& document)
{
    return WithSection(document, "commands", TapeHelp());
}

} // namespace bancada
