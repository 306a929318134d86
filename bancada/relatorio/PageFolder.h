// A database as a folder of pages: an overview that links to pages of days.
#pragma once

#include "bancada/relatorio/HtmlPage.h"
#include "bancada/relatorio/Report.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace bancada::relatorio
{

// No page is longer, in bytes: a day that would be is split, and a document that alone would be is
// named and left out.
constexpr std::size_t MAX_PAGE_BYTES = 2'000'000;

// Takes a page whole: its file name, without a folder, and its content.
using PageSink = std::function<void(const std::string& name, const std::string& content)>;

// Of the databases of one register, in their order. Writes `index.html`, the overview by month and
// day, and `dia-00001.html` and so on, a page a day in the order of their issue, `dia-00001-2.html`
// where a day is split. Where the days are many the overview has the months alone, and
// `mes-2024-01.html` their days. Each page needs nothing from elsewhere, and the links are
// relative, so that the folder may be moved. Holds one page at a time and a few figures of each
// day. Throws Unusable where the database cannot be read, and what `sink` throws.
void WritePages(const std::vector<PageSource>& sources, const HtmlPage& page, const PageSink& sink);

} // namespace bancada::relatorio
