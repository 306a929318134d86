#include "bancada/cli/NewDatabase.h"

#include "bancada/Messages.h"
#include "bancada/Unusable.h"

#include <filesystem>
#include <fstream>
#include <iostream>

namespace bancada
{

NewDatabase::NewDatabase(const std::string& place, const std::vector<UsedFile>& inputs)
    : m_place(place)
{
    RequireApart(place, inputs);
    if (place == "-") {
        m_fresh.emplace((std::filesystem::temp_directory_path() / "ecf-bancada").string());
    } else {
        RequireNew(UsedDatabase(place));
        m_fresh.emplace(place);
    }
}

void NewDatabase::Commit()
{
    if (m_place != "-") {
        m_fresh->PlaceAnew();
        return;
    }
    std::ifstream file(m_fresh->Path(), std::ios::binary);
    if (!(std::cout << file.rdbuf())) {
        throw Unusable(Tr("the database cannot be written to standard output"));
    }
}

std::ostream& NewDatabase::Report() const
{
    return m_place == "-" ? std::cerr : std::cout;
}

} // namespace bancada
