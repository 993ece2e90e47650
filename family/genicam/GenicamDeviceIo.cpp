#include "family/genicam/GenicamDevice.h"

#include "family/genicam/AccessClock.h"
#include "family/genicam/AravisSupport.h"
#include "family/genicam/FreshReads.h"

#include <arv.h>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

namespace {

const char* const kOnlyTheCameraTells = "only the camera can tell it (an offline description holds no value)";

} // namespace

ParameterEntryAccessMode GenicamDevice::accessOf(ArvGcNode* node, bool* locked)
{
    auto* feature = ARV_GC_FEATURE_NODE(node);
    GError* e = nullptr;
    const bool implemented = arv_gc_feature_node_is_implemented(feature, &e);
    m_errors.note(e);
    g_clear_error(&e);
    if (!implemented)
        return peamNotImplemented;
    const bool available = arv_gc_feature_node_is_available(feature, &e);
    m_errors.note(e);
    g_clear_error(&e);
    if (!available)
        return peamNotAvailable;
    const bool isLocked = arv_gc_feature_node_is_locked(feature, &e);
    m_errors.note(e);
    g_clear_error(&e);
    if (locked)
        *locked = isLocked;
    if (isLocked)
        return peamReadOnly;
    switch (arv_gc_feature_node_get_actual_access_mode(feature)) {
    case ARV_GC_ACCESS_MODE_WO:
        return peamReadWrite;
    case ARV_GC_ACCESS_MODE_RW:
        return peamReadWriteIfValid;
    default:
        return peamReadOnly;
    }
}

ParameterState GenicamDevice::read(int index)
{
    const FeatureBinding& b = m_bindings[index];
    const FeatureLayout& f = m_layout.features[index];
    ParameterState state;
    // What the description does not let be evaluated is never handed to the GenICam library.
    if (!f.problem.empty()) {
        state.problem = f.problem;
        return state;
    }
    AccessClock clock(m_accessStarted);
    FreshReads fresh(readsPastCache(index) ? m_gc : nullptr);
    m_errors.takeMessage();
    state.access = accessOf(b.nodes.node, nullptr);
    if (m_errors.lost())
        return state;
    state.problem = evaluationProblem(index);
    if (!state.problem.empty() || m_errors.lost())
        return state;
    b.io->read(f, b.nodes, state, m_errors);
    if (m_offline && state.valid && state.access == peamReadOnly && std::get_if<std::string>(&state.value) &&
        std::get_if<std::string>(&state.value)->empty()) {
        // What a camera reports of itself (its serial number, its firmware) no file holds.
        state.valid = false;
        state.problem = kOnlyTheCameraTells;
        return state;
    }
    if (state.valid)
        return state;
    switch (state.access) {
    case peamReadWrite:
        state.problem = "it can be written, but not read";
        break;
    case peamNotImplemented:
        state.problem = "the device does not implement it";
        break;
    case peamNotAvailable:
        state.problem = "it is not available now";
        break;
    default:
        state.problem = m_errors.lost() ? std::string(kNoAnswer) : m_errors.takeMessage();
        break;
    }
    return state;
}

std::string GenicamDevice::evaluationProblem(int index)
{
    const int described = m_bindings[index].described;
    if (described < 0)
        return std::string();
    const GenicamDescription::Node& node = m_description.closureOf(described);
    for (int formulaNode : node.dividingFormulas) {
        const GenicamDescription::Formulas* formulas = m_description.formulasAt(formulaNode);
        for (const Formula& formula : formulas->read) {
            Formula::Number value;
            std::string problem;
            auto variable = [&](const std::string& name, Formula::Number* out, std::string* why) {
                return formulaVariable(*formulas, name, out, why, 0);
            };
            if (!formula.evaluate(variable, formulas->integer, &value, &problem)) {
                const std::string& name = m_description.nameAt(formulaNode);
                return name == m_layout.features[index].name
                           ? "its formula fails: " + problem
                           : "its value passes through " + name + ", whose formula fails: " + problem;
            }
        }
    }
    for (int lengthNode : node.lengthNodes) {
        const std::string& lengthName = m_description.nodeAt(lengthNode).length;
        ArvGcNode* length = arv_gc_get_node(m_gc, lengthName.c_str());
        if (!length || !ARV_IS_GC_INTEGER(length))
            continue;
        GError* e = nullptr;
        const gint64 bytes = arv_gc_integer_get_value(ARV_GC_INTEGER(length), &e);
        m_errors.note(e);
        const bool failed = e != nullptr;
        g_clear_error(&e);
        if (failed)
            return "the length of " + m_description.nameAt(lengthNode) + " cannot be read";
        if (bytes < 0 || bytes > GenicamDescription::kMaxRegisterLength)
            return "the register " + m_description.nameAt(lengthNode) + " would be " + std::to_string(bytes) +
                   " bytes long; registers above " + std::to_string(GenicamDescription::kMaxRegisterLength) +
                   " bytes are not read";
    }
    return std::string();
}

bool GenicamDevice::formulaVariable(const GenicamDescription::Formulas& formulas, const std::string& name,
                                    Formula::Number* value, std::string* problem, int depth)
{
    // Constants and sub-expressions; the description was checked for sub-expressions that loop.
    auto constant = formulas.constants.find(name);
    if (constant != formulas.constants.end()) {
        auto formula = Formula::parse(constant->second, problem);
        if (!formula || depth > 32)
            return false;
        return formula->evaluate(
            [&](const std::string& inner, Formula::Number* out, std::string* why) {
                return formulaVariable(formulas, inner, out, why, depth + 1);
            },
            formulas.integer, value, problem);
    }
    std::string nodeName;
    auto variable = formulas.variables.find(name.substr(0, name.find('.')));
    if (variable != formulas.variables.end())
        nodeName = variable->second;
    else if (name == "FROM")
        nodeName = formulas.from;
    ArvGcNode* node = nodeName.empty() ? nullptr : arv_gc_get_node(m_gc, nodeName.c_str());
    if (!node) {
        *problem = "variable " + name + " that names nothing";
        return false;
    }
    GError* e = nullptr;
    if (ARV_IS_GC_FLOAT(node)) {
        value->integer = false;
        value->d = arv_gc_float_get_value(ARV_GC_FLOAT(node), &e);
    } else if (ARV_IS_GC_INTEGER(node)) {
        value->integer = true;
        value->i = arv_gc_integer_get_value(ARV_GC_INTEGER(node), &e);
    } else if (ARV_IS_GC_ENUMERATION(node)) {
        value->integer = true;
        value->i = arv_gc_enumeration_get_int_value(ARV_GC_ENUMERATION(node), &e);
    } else if (ARV_IS_GC_BOOLEAN(node)) {
        value->integer = true;
        value->i = arv_gc_boolean_get_value(ARV_GC_BOOLEAN(node), &e) ? 1 : 0;
    } else {
        *problem = "variable " + name + " that has no number";
        return false;
    }
    m_errors.note(e);
    const bool ok = !e;
    g_clear_error(&e);
    if (!ok)
        *problem = "variable " + name + " that cannot be read";
    return ok;
}

bool GenicamDevice::readsPastCache(int feature)
{
    const int described = m_bindings[static_cast<std::size_t>(feature)].described;
    return described >= 0 && m_description.closureOf(described).dynamicAddressOnPath;
}

std::string GenicamDevice::write(int index, const boost::any& value)
{
    if (m_errors.lost())
        return kNoAnswer;
    const FeatureLayout& f = m_layout.features[index];
    const ParameterKind& kind = f.parameterKind();
    const FeatureBinding& b = m_bindings[index];
    if (!kind.takesWrites())
        return kind.refusal(value, ParameterLimits());
    if (!f.problem.empty())
        return f.problem;

    AccessClock clock(m_accessStarted);
    FreshReads fresh(readsPastCache(index) ? m_gc : nullptr);
    bool locked = false;
    const ParameterEntryAccessMode access = accessOf(b.nodes.node, &locked);
    if (m_errors.lost())
        return kNoAnswer;
    // Aravis would write locked and unavailable features; the description says they must not be.
    std::string reason = ParameterKind::accessRefusal(access, locked);
    if (!reason.empty())
        return reason;
    // Limits the device cannot tell are left out of the check, and to Aravis.
    const ParameterLimits limits = b.io->writeLimits(f, b.nodes, value, m_errors);
    if (m_errors.lost())
        return kNoAnswer;
    reason = kind.refusal(value, limits);
    if (!reason.empty())
        return reason;

    GError* e = nullptr;
    b.io->write(b.nodes, value, &e);
    if (!e)
        return std::string();
    m_errors.note(e);
    reason = reasonOf(e);
    g_error_free(e);
    // A write that times out says what every access to a lost device says, whichever register it
    // reached first.
    return m_errors.lost() ? std::string(kNoAnswer) : reason;
}

bool GenicamDevice::readInto(int feature, Publication& publication)
{
    // Reading on after a loss would wait for the device once per feature.
    if (m_errors.lost())
        return false;
    ParameterState st = read(feature);
    if (m_errors.lost())
        return false;
    if (st != m_published[feature]) {
        m_published[feature] = st;
        publication.states.emplace_back(feature, std::move(st));
    }
    return true;
}

void GenicamDevice::readAll(Publication& publication)
{
    for (std::size_t i = 0; i < m_layout.features.size(); ++i) {
        if (!readInto(static_cast<int>(i), publication))
            return;
    }
}

void GenicamDevice::readSome(const std::vector<int>& features, Publication& publication)
{
    for (int i : features) {
        if (!readInto(i, publication))
            return;
    }
}

const std::vector<int>& GenicamDevice::affectedBy(int feature)
{
    auto known = m_affected.find(feature);
    if (known != m_affected.end())
        return known->second;
    std::vector<int>& features = m_affected[feature];
    const int described = m_bindings[static_cast<std::size_t>(feature)].described;
    // A feature the description does not know (a simulated camera's own) may affect anything:
    // features stays empty, and everything is read again.
    if (described < 0)
        return features;
    if (m_featureOfNode.empty()) {
        // Once: which feature shows each node, and the features no node describes (read always).
        for (std::size_t i = 0; i < m_bindings.size(); ++i) {
            const int node = m_bindings[i].described;
            if (node < 0) {
                m_undescribed.push_back(static_cast<int>(i));
                continue;
            }
            if (static_cast<std::size_t>(node) >= m_featureOfNode.size())
                m_featureOfNode.resize(static_cast<std::size_t>(node) + 1, -1);
            m_featureOfNode[static_cast<std::size_t>(node)] = static_cast<int>(i);
        }
    }
    for (int node : m_description.affectedBy(described))
        if (static_cast<std::size_t>(node) < m_featureOfNode.size() &&
            m_featureOfNode[static_cast<std::size_t>(node)] >= 0)
            features.push_back(m_featureOfNode[static_cast<std::size_t>(node)]);
    features.insert(features.end(), m_undescribed.begin(), m_undescribed.end());
    return features;
}

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
