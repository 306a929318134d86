// An operator new that fails where the environment says so, for the program that out_of_memory.py
// runs: ECF_FAIL_AT=N fails the N-th allocation, ECF_FAIL_FROM=N that one and all that follow. With
// neither, the number of allocations goes to standard error in the end.
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>

namespace
{

long NumberIn(const char* name)
{
    const char* text = std::getenv(name);
    return text == nullptr ? 0 : std::atol(text);
}

struct Allocations {
    Allocations() : at(NumberIn("ECF_FAIL_AT")), from(NumberIn("ECF_FAIL_FROM"))
    {
        if (at == 0 && from == 0) {
            std::atexit(Tell);
        }
    }

    static void Tell();

    const long at;
    const long from;
    long count = 0;
};

Allocations& All()
{
    static Allocations allocations;
    return allocations;
}

void Allocations::Tell()
{
    std::fprintf(stderr, "allocations: %ld\n", All().count);
}

} // namespace

void* operator new(std::size_t size)
{
    Allocations& all = All();
    ++all.count;
    if (all.count != all.at && (all.from == 0 || all.count < all.from)) {
        if (void* block = std::malloc(size == 0 ? 1 : size)) {
            return block;
        }
    }
    throw std::bad_alloc();
}

void operator delete(void* block) noexcept
{
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept
{
    std::free(block);
}
