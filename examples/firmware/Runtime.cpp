// What a program needs of the C++ runtime when it is linked without it: a class with a virtual
// destructor names operator delete, and one with pure virtual operations the function that stands
// in their slots. Neither is ever called here: nothing is made by new, and no operation is called
// while its object is being made.
#include <cstddef>
#include <cstdlib>

void operator delete(void*) noexcept
{
    std::abort();
}
void operator delete(void*, std::size_t) noexcept
{
    std::abort();
}
extern "C" [[noreturn]] void __cxa_pure_virtual()
{
    std::abort();
}
