#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace vorn {
namespace test {

// The position of a virtual member function in its class's table of virtual functions, read from
// the pointer to member (Itanium C++ ABI: the pointer holds 1 + the byte offset into the table).
// The destructor takes positions 0 and 1 there, so the n-th virtual operation after it sits at n.
template <class F> std::ptrdiff_t virtualSlot(F f)
{
    struct Representation
    {
        std::uintptr_t ptr;
        std::ptrdiff_t adjustment;
    } rep;
    static_assert(sizeof(F) == sizeof(Representation), "Itanium pointer to member expected");
    std::memcpy(&rep, &f, sizeof rep);
    if ((rep.ptr & 1u) == 0)
        return -1; // not virtual
    return static_cast<std::ptrdiff_t>((rep.ptr - 1) / sizeof(void*));
}

} // namespace test
} // namespace vorn
