// The kinds that hold no value: categories, which group features, and plain entries.
#include "family/parameters/kinds/KindSupport.h"

#include <vorn/host/MvParametersCategoryNode.h>
#include <vorn/host/MvParametersModel.h>

namespace vorn {
namespace core {
namespace models {
namespace kinds {

namespace {

class CategoryKind final : public ParameterKind
{
public:
    CategoryKind() : ParameterKind(ParameterKindId::Category, "Category", false) {}

    boost::shared_ptr<MvParametersEntryNode> createNode(const boost::shared_ptr<MvParametersModel>& model,
                                                        const std::string& name) const override
    {
        return model->createNode<MvParametersCategoryNode>(name);
    }

    bool parse(const MvParametersEntryNode&, const std::string&, boost::any*,
               std::string* reason) const override
    {
        *reason = "a category has no value";
        return false;
    }
};

class EntryKind final : public ParameterKind
{
public:
    EntryKind() : ParameterKind(ParameterKindId::Entry, "Other", false) {}

    boost::shared_ptr<MvParametersEntryNode> createNode(const boost::shared_ptr<MvParametersModel>& model,
                                                        const std::string& name) const override
    {
        return model->createNode<MvParametersEntryNode>(name);
    }
};

} // namespace

const ParameterKind& categoryKind()
{
    static const CategoryKind kind;
    return kind;
}

const ParameterKind& entryKind()
{
    static const EntryKind kind;
    return kind;
}

} // namespace kinds
} // namespace models
} // namespace core
} // namespace vorn
