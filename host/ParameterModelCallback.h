#pragma once

#include <vorn/base/VornExport.h>

#include <boost/any.hpp>
#include <boost/shared_ptr.hpp>

namespace vorn {
namespace core {

namespace models {
class MvParametersEntryNode;
}

// The one channel through which values go back to the owner of a parameter tree. The value types by
// node kind: long long (integers, integers shown as check boxes, enumerations: the entry's value),
// unsigned long long (unsigned 64-bit), double (float), std::string (string), bool (boolean) and an
// empty boost::any to execute a command.
class VORN_PARAMETERS_API ParameterModelCallback
{
public:
    virtual ~ParameterModelCallback();
    virtual void setValue(boost::shared_ptr<models::MvParametersEntryNode> node, boost::any value) = 0;
};

} // namespace core
} // namespace vorn
