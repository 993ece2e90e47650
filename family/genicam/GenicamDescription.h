#pragma once

#include "family/genicam/GenicamFormula.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

// A GenICam description as the backend reads it, before the GenICam library (Aravis) evaluates any of
// it. A description is input from outside: a file a user opens or XML a camera serves. It is read once,
// bounded in size, parsed once here and checked as a whole:
// - every reference between nodes is followed (iteratively), and a node whose value would depend on a
//   cycle (A -> B -> A) or on a node the description does not define is marked with the problem, as is
//   every node that depends on it: the GenICam library would recurse without end there, or answer 0;
// - every formula is parsed (a formula the library cannot read it answers with 0), and written again
//   where its integer division could trap (see Formula::trapFree);
// - registers longer than kMaxRegisterLength are marked.
// Nodes with a problem are never handed to the GenICam library to evaluate: the backend shows them as
// not readable, and says why. The library then parses xml(): the text as read, or written again when a
// formula was rewritten or the description declares entities (which the library would not resolve).
class GenicamDescription
{
public:
    // A description file larger than this is refused: the largest cameras' descriptions are a few
    // megabytes, and the GenICam library needs about 150 bytes of memory per byte of description, so
    // this keeps an open description within a few hundred megabytes.
    static constexpr std::size_t kMaxFileSize = 8u << 20;
    // A register longer than this is not read: no camera has one, and the GenICam library would allocate
    // whatever length a description gives.
    static constexpr std::int64_t kMaxRegisterLength = 65536;

    struct Formulas;

    struct Node
    {
        std::string tag;       // the element's name: "Integer", "IntReg", ...
        int line = 0;          // where it is defined
        std::string isDone;    // the node a command's pIsDone names
        std::string value;     // the node pValue names
        std::string length;    // the node pLength names (a length known only when read)
        std::string sign;      // "Signed", "Unsigned" or empty
        std::string endianess; // "BigEndian", "LittleEndian" or empty
        // A register's bytes: its address when the description gives it outright (-1 otherwise), and
        // whether a node gives part of it (pAddress, pIndex).
        std::int64_t address = -1;
        std::int64_t bytes = 0;
        bool dynamicAddress = false;
        int pollingMs = 0;
        // Why the node's value cannot be had, or empty: "its references loop: A -> B -> A".
        std::string problem;
        // The nodes it references to be evaluated (pValue, pMin, pAddress, formula variables, ...).
        std::vector<int> uses;
        // The nodes whose change makes its value stale (pInvalidator): not evaluated, but a write to one
        // of them is read back through it.
        std::vector<int> invalidators;
        int owner = -1; // an enumeration entry's enumeration
        // The formula nodes (with a division) that its evaluation passes through, the ones they use first;
        // filled on first use by formulasOf.
        bool formulasKnown = false;
        std::vector<int> dividingFormulas;
        std::vector<int> lengthNodes; // nodes whose pLength its evaluation passes through
        // Whether its evaluation passes through a register whose address a node gives (pAddress,
        // pIndex): the GenICam library's register cache does not tell such a register's addresses
        // apart, so it is read past the cache.
        bool dynamicAddressOnPath = false;
    };

    // A formula node's formulas, and the nodes its variables name.
    struct Formulas
    {
        bool integer = true;
        // What a read evaluates: a SwissKnife's Formula, a Converter's FormulaFrom (whose FROM is the
        // value of the node pValue names).
        std::vector<Formula> read;
        std::unordered_map<std::string, std::string> variables; // formula variable -> node name
        std::unordered_map<std::string, std::string> constants; // Constant and Expression texts
        std::string from;                                       // a Converter's pValue
    };

    GenicamDescription();
    ~GenicamDescription();
    GenicamDescription(const GenicamDescription&) = delete;
    GenicamDescription& operator=(const GenicamDescription&) = delete;

    // Reads a description file once (a regular file of at most kMaxFileSize bytes, plain or zipped) and
    // loads it. On failure error says what is wrong, beginning with the file's path.
    bool loadFile(const std::string& path, std::string* error);
    // Loads a description in memory (a device's); origin names it in errors. On failure error names the
    // origin, the line where known, and what is wrong.
    bool load(const char* data, std::size_t size, const std::string& origin, std::string* error);

    // The text for the GenICam library to parse.
    const std::string& xml() const { return m_xml; }
    // What the description says of itself.
    const std::string& vendorName() const { return m_vendor; }
    const std::string& modelName() const { return m_model; }

    // The node with this name, or nullptr.
    const Node* node(const std::string& name) const;
    // An enumeration's entry, or nullptr.
    const Node* entry(const std::string& enumeration, const std::string& name) const;
    const Node& nodeAt(int index) const { return m_nodes[static_cast<std::size_t>(index)]; }
    const std::string& nameAt(int index) const { return m_names[static_cast<std::size_t>(index)]; }
    int indexOf(const std::string& name) const;
    // The formulas of a formula node, or nullptr.
    const Formulas* formulasAt(int index) const;
    // Fills the node's dividingFormulas, lengthNodes and dynamicAddressOnPath (once), and returns it.
    const Node& closureOf(int index);
    // The nodes whose value a write to the node may change: the node, where its value goes
    // (pValue after pValue), registers that may share bytes with those, and every node whose
    // evaluation passes through any of them.
    std::vector<int> affectedBy(int index);
    static bool isRegister(const std::string& tag);

private:
    bool parse(const char* data, std::size_t size, const std::string& origin, std::string* error);
    void findCycles();
    void spreadProblems();

    std::vector<Node> m_nodes;
    std::vector<std::string> m_names;
    std::unordered_map<std::string, int> m_index;
    std::unordered_map<int, Formulas> m_formulas;
    // Made on the first affectedBy: the reverse of Node::uses (and pInvalidator, and entries to their
    // enumeration), the registers by address and those whose address is known only when read.
    void indexDependencies();
    std::vector<std::vector<int>> m_usedBy;
    std::multimap<std::int64_t, int> m_registersByAddress;
    std::vector<int> m_registersAnywhere;
    std::int64_t m_longestRegister = 1;
    std::vector<char> m_marks; // per node, cleared after each use
    std::string m_xml;
    std::string m_vendor;
    std::string m_model;
};

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
