#pragma once

#include <string>
#include <unordered_map>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

// What the backend reads from a GenICam description itself, next to Aravis: the checks that give a
// clear error before Aravis sees a file, and the few elements Aravis does not keep (pIsDone) or
// keeps out of reach (PollingTime, Sign, Endianess).
class GenicamDescription
{
public:
    struct Node
    {
        std::string tag;       // the element's name: "Integer", "IntReg", ...
        std::string isDone;    // the node a command's pIsDone names
        std::string value;     // the node pValue names
        std::string sign;      // "Signed", "Unsigned" or empty
        std::string endianess; // "BigEndian", "LittleEndian" or empty
        int pollingMs = 0;
    };

    // Reads and checks a description file: it must be readable, well-formed XML, with a
    // RegisterDescription holding a category named Root. On failure error says what is wrong,
    // beginning with the file's path. libxml's own reports are captured, never printed.
    bool loadFile(const std::string& path, std::string* error);
    // The same for a description in memory (a device's); origin names it in errors.
    bool load(const char* data, std::size_t size, const std::string& origin, std::string* error);

    // The node with this name, or nullptr.
    const Node* node(const std::string& name) const;

private:
    std::unordered_map<std::string, Node> m_nodes;
};

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
