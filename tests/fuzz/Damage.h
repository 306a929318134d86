// Damage to a file: bytes set, cut off, copied from one place to another.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <fuzzer/FuzzedDataProvider.h>
#include <string>

// Writes a number as the engine does, the highest byte first.
inline void PutNumber(std::string& bytes, std::size_t at, std::size_t width, std::uint32_t number)
{
    for (std::size_t i = 0; i < width && at + i < bytes.size(); ++i) {
        bytes[at + i] = static_cast<char>((number >> (8 * (width - 1 - i))) & 0xFF);
    }
}

// One damage to a file of pages behind `head` bytes: most of them where a page's own head, its list
// of cells or a cell's beginning stands, which a byte drawn at random seldom meets.
inline void DamagePage(std::string& bytes, std::size_t head, std::size_t pageSize,
                       FuzzedDataProvider& data)
{
    if (bytes.size() < head + pageSize) {
        return;
    }
    const std::size_t pages = (bytes.size() - head) / pageSize;
    const std::size_t page = data.ConsumeIntegralInRange<std::size_t>(0, pages - 1);
    const std::size_t start = head + page * pageSize;
    // The first page of a database has the file's header before its own.
    const std::size_t own = start + (page == 0 && head == 0 ? 100 : 0);
    const std::size_t width = data.PickValueInArray<std::size_t>({1, 2, 4});
    const std::uint32_t number = data.ConsumeIntegral<std::uint32_t>();
    switch (data.ConsumeIntegralInRange(0, 6)) {
    case 0:
        PutNumber(bytes, own + data.ConsumeIntegralInRange<std::size_t>(0, 11), width, number);
        break;
    case 1: // a cell's place
        PutNumber(bytes, own + 8 + 2 * data.ConsumeIntegralInRange<std::size_t>(0, 40), 2, number);
        break;
    case 2: { // a cell's first bytes: its size, rowid, or the page that it leads to
        const std::size_t pointer = own + 8 + 2 * data.ConsumeIntegralInRange<std::size_t>(0, 20);
        const auto byte = [&](std::size_t at) { return static_cast<unsigned char>(bytes[at]); };
        const std::size_t cell = (byte(pointer) * std::size_t{256}) + byte(pointer + 1);
        PutNumber(bytes, start + cell + data.ConsumeIntegralInRange<std::size_t>(0, 15), width,
                  number);
        break;
    }
    case 3: // the file's header, or a log's
        PutNumber(bytes, data.ConsumeIntegralInRange<std::size_t>(0, 99), width, number);
        break;
    case 4:
        bytes.resize(data.ConsumeIntegralInRange<std::size_t>(0, bytes.size()));
        break;
    case 5: { // one page in another's place
        const std::size_t other = data.ConsumeIntegralInRange<std::size_t>(0, pages - 1);
        bytes.replace(start, pageSize, bytes.substr(head + other * pageSize, pageSize));
        break;
    }
    default:
        PutNumber(bytes, start + data.ConsumeIntegralInRange<std::size_t>(0, pageSize - 1), width,
                  number);
    }
}
