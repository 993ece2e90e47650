#include "FeatureValueFile.h"

#include "FeatureTreeWalk.h"

#include <vorn/host/ParameterKind.h>
#include <vorn/host/ParameterText.h>

#include <charconv>
#include <set>
#include <sstream>

namespace vorn {
namespace browser {

using namespace core::models;

namespace {

using core::models::texts::trimmed;

// The field index of a node that is one index of a field, or -1.
int fieldIndexOf(const MvParametersEntryNode& node)
{
    const ParameterPresentation p = ParameterKind::of(node).presentation(node);
    return p.isField ? p.fieldIndex : -1;
}

std::string headingOf(const std::vector<std::string>& path)
{
    std::string text = "#";
    for (std::size_t i = 0; i < path.size(); ++i)
        text += (i == 0 ? " " : " > ") + path[i];
    return text;
}

} // namespace

std::string FeatureValueFile::write(const boost::shared_ptr<MvParametersEntryNode>& root,
                                    const std::string& heading)
{
    std::ostringstream out;
    std::istringstream headingLines(heading);
    for (std::string line; std::getline(headingLines, line);)
        out << "# " << line << '\n';

    std::set<std::string> written;
    std::vector<std::string> path;      // display names of the categories above the current node
    std::vector<std::string> shownPath; // the path of the last heading written
    FeatureTreeWalk::forEach(root, [&](const FeatureTreeWalk::EntryPtr& node, int depth) {
        path.resize(static_cast<std::size_t>(depth));
        const ParameterKind& kind = ParameterKind::of(*node);
        if (!kind.holdsValue()) {
            path.push_back(node->getDisplayName());
            return;
        }
        const auto text = line(*node);
        if (!text)
            return;
        if (!written.insert(text->substr(0, text->find('='))).second)
            return;
        if (path != shownPath) {
            out << '\n' << headingOf(path) << '\n';
            shownPath = path;
        }
        out << *text << '\n';
    });
    return out.str();
}

std::optional<std::string> FeatureValueFile::line(const MvParametersEntryNode& node)
{
    const ParameterKind& kind = ParameterKind::of(node);
    // Internal nodes are the device's business, not settings a person makes.
    if (!kind.holdsValue() || !node.isWritable() || node.getType() == petInternal)
        return std::nullopt;
    const auto value = kind.format(node);
    if (!value)
        return std::nullopt;
    const FeatureAssignment assignment{node.getName(), fieldIndexOf(node), *value, 0};
    return assignment.key() + '=' + escape(*value);
}

FeatureValueFile::Reading FeatureValueFile::read(const std::string& text)
{
    Reading reading;
    std::istringstream lines(text);
    int number = 0;
    for (std::string line; std::getline(lines, line);) {
        ++number;
        if (!line.empty() && line.back() == '\r')
            line.pop_back();
        const std::string content = trimmed(line);
        if (content.empty() || content[0] == '#')
            continue;
        if (line.find(kBeyondLatin1) != std::string::npos) {
            reading.problems.push_back({number, "holds a character that no feature's text can hold (only "
                                                "Latin-1 characters can be set)"});
            continue;
        }
        FeatureAssignment assignment;
        std::string reason;
        if (!parseAssignment(line, &assignment, &reason)) {
            reading.problems.push_back({number, reason});
            continue;
        }
        assignment.value = unescape(assignment.value);
        assignment.line = number;
        reading.assignments.push_back(assignment);
    }
    return reading;
}

bool FeatureValueFile::parseAssignment(const std::string& text, FeatureAssignment* assignment,
                                       std::string* reason)
{
    const auto equals = text.find('=');
    if (equals == std::string::npos) {
        *reason = "expected Name=Value, found \"" + trimmed(text) + "\"";
        return false;
    }
    std::string key = trimmed(text.substr(0, equals));
    int index = -1;
    if (!key.empty() && key.back() == ']') {
        const auto open = key.find('[');
        const std::string digits =
            open == std::string::npos ? std::string() : key.substr(open + 1, key.size() - open - 2);
        const auto result = std::from_chars(digits.data(), digits.data() + digits.size(), index);
        if (digits.empty() || result.ec != std::errc() || result.ptr != digits.data() + digits.size() ||
            index < 0) {
            *reason = "\"" + key + "\" is not a feature name with an index such as Name[2]";
            return false;
        }
        key = trimmed(key.substr(0, open));
    }
    if (key.empty()) {
        *reason = "no feature name before '='";
        return false;
    }
    assignment->name = key;
    assignment->fieldIndex = index;
    assignment->value = text.substr(equals + 1);
    return true;
}

std::string FeatureValueFile::escape(const std::string& value)
{
    std::string out;
    out.reserve(value.size());
    for (char c : value) {
        switch (c) {
        case '\\':
            out += "\\\\";
            break;
        case '\n':
            out += "\\n";
            break;
        case '\r':
            out += "\\r";
            break;
        case '\t':
            out += "\\t";
            break;
        default:
            out += c;
        }
    }
    return out;
}

// Unknown sequences stay as written, so that a hand-written path such as C:\data reads as meant.
std::string FeatureValueFile::unescape(const std::string& value)
{
    std::string out;
    out.reserve(value.size());
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char c = value[i];
        if (c != '\\' || i + 1 == value.size()) {
            out += c;
            continue;
        }
        switch (value[i + 1]) {
        case '\\':
            out += '\\';
            break;
        case 'n':
            out += '\n';
            break;
        case 'r':
            out += '\r';
            break;
        case 't':
            out += '\t';
            break;
        default:
            out += c;
            continue;
        }
        ++i;
    }
    return out;
}

} // namespace browser
} // namespace vorn
