#include "bancada/tape/FieldVisitor.h"

namespace bancada
{

void FieldVisitor::ShortText(const char* name, char* out, std::size_t size, std::size_t,
                             Presence presence, const char* doc, const char* example)
{
    Text(name, out, size, presence, doc, example);
}

} // namespace bancada
