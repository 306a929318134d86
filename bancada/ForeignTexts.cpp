#include "bancada/ForeignTexts.h"

#include "bancada/Messages.h"

#include <optional>
#include <system_error>
#include <vector>

namespace bancada
{
namespace
{

// The system's catalogue is not asked: it is there only with the locale, and says nothing in C.
constexpr const char* SYSTEM[] = {
    TrLater("Operation not permitted"),
    TrLater("No such file or directory"),
    TrLater("Input/output error"),
    TrLater("Cannot allocate memory"),
    TrLater("Permission denied"),
    TrLater("Device or resource busy"),
    TrLater("File exists"),
    TrLater("Invalid cross-device link"),
    TrLater("Not a directory"),
    TrLater("Is a directory"),
    TrLater("Invalid argument"),
    TrLater("Too many open files in system"),
    TrLater("Too many open files"),
    TrLater("Text file busy"),
    TrLater("File too large"),
    TrLater("No space left on device"),
    TrLater("Read-only file system"),
    TrLater("Broken pipe"),
    TrLater("File name too long"),
    TrLater("Directory not empty"),
    TrLater("Too many levels of symbolic links"),
    TrLater("Resource temporarily unavailable"),
    TrLater("Disk quota exceeded"),
};

// Those of the engine that are of no statement.
constexpr const char* ENGINE[] = {
    TrLater("access permission denied"),
    TrLater("attempt to write a readonly database"),
    TrLater("database disk image is malformed"),
    TrLater("database is locked"),
    TrLater("database or disk is full"),
    TrLater("database schema has changed"),
    TrLater("database table is locked"),
    TrLater("disk I/O error"),
    TrLater("file is not a database"),
    TrLater("interrupted"),
    TrLater("locking protocol"),
    TrLater("out of memory"),
    TrLater("unable to open database file"),
};

// Of the library in LogDatabase, with the places of what it fills in. A test holds that none is
// missing.
constexpr const char* OWNER[] = {
    TrLater("it has no name"),
    TrLater("its name is too long"),
    TrLater("it was emptied while it was in use"),
    TrLater("it carries command number %1"),
    TrLater("there is no file to set aside"),
    TrLater("a reader still needs it"),
    TrLater("a new one begins"),
    TrLater("it has no name to be set aside under"),
    TrLater("%1 is there already"),
    TrLater("cannot write where it is set aside"),
    TrLater("cannot move it to %1"),
    TrLater("cannot sync the folder"),
    TrLater("it is a database of another application (application_id %1)"),
    TrLater("its schema is of version %1, and this program knows those up to %2"),
    TrLater("it is not a logging database: it has no column %1.%2"),
    TrLater("it is not a logging database: it has the %1 %2"),
    TrLater("it already holds rows (table %1)"),
    TrLater("no database is open"),
    TrLater("another program has written to the database: it is at command %1, not %2"),
    TrLater("the engine has rolled its transaction back"),
};

// No pattern has more.
constexpr std::size_t MOST_PLACES = 2;

// What stands in `text` at the places of `pattern`; nothing where it has another form.
std::optional<std::vector<std::string_view>> PlacesOf(std::string_view pattern,
                                                      std::string_view text)
{
    std::vector<std::string_view> values;
    for (;;) {
        const std::size_t place = pattern.find('%');
        const std::string_view before = pattern.substr(0, place);
        if (text.substr(0, before.size()) != before) {
            return std::nullopt;
        }
        text.remove_prefix(before.size());
        if (place == std::string_view::npos) {
            return text.empty() ? std::optional(values) : std::nullopt;
        }
        pattern.remove_prefix(place + 2);
        const std::string_view behind = pattern.substr(0, pattern.find('%'));
        const std::size_t end = behind.empty() ? text.size() : text.find(behind);
        if (end == std::string_view::npos || end == 0) {
            return std::nullopt;
        }
        values.push_back(text.substr(0, end));
        text.remove_prefix(end);
    }
}

template <std::size_t COUNT>
std::optional<std::string> Known(const char* const (&list)[COUNT], std::string_view text)
{
    for (const char* pattern : list) {
        if (auto values = PlacesOf(pattern, text)) {
            values->resize(MOST_PLACES);
            return Tr(pattern, {(*values)[0], (*values)[1]});
        }
    }
    return std::nullopt;
}

std::optional<std::string> KnownOne(std::string_view text)
{
    std::optional<std::string> known = Known(OWNER, text);
    if (!known) {
        known = Known(ENGINE, text);
    }
    return known ? known : Known(SYSTEM, text);
}

} // namespace

std::string TrForeign(std::string_view text)
{
    if (const std::optional<std::string> known = KnownOne(text)) {
        return *known;
    }
    // The engine's reason with the system's behind it, as the owner tells them.
    const std::size_t open = text.rfind(" (");
    if (open != std::string_view::npos && text.back() == ')') {
        const std::string_view inner = text.substr(open + 2, text.size() - open - 3);
        return TrForeign(text.substr(0, open)) + " (" + TrForeign(inner) + ")";
    }
    return std::string(text);
}

std::string SystemReason(int number)
{
    return TrForeign(std::generic_category().message(number));
}

} // namespace bancada
