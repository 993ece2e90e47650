#pragma once

#include <boost/enable_shared_from_this.hpp>
#include <boost/shared_ptr.hpp>

namespace vorn {
namespace core {

// The shared-from-this link of item nodes. It adds no virtual table of its own.
template <class T> class EnableThisPtr : public boost::enable_shared_from_this<T>
{
public:
    boost::shared_ptr<T> this_pointer() { return this->shared_from_this(); }
    boost::shared_ptr<const T> this_pointer() const { return this->shared_from_this(); }
};

} // namespace core
} // namespace vorn
