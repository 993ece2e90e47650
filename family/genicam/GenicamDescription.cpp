#include "family/genicam/GenicamDescription.h"

#include <arv.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlerror.h>
#include <zip.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <mutex>
#include <sys/stat.h>
#include <unistd.h>

namespace vorn {
namespace core {
namespace models {
namespace genicam {

namespace {

// Takes over libxml's error reporting on this thread while it lives, keeping the first error.
// libxml keeps its handlers per thread, so other threads' parsers are not affected.
class LibxmlErrorCapture
{
public:
    LibxmlErrorCapture()
        : m_structured(xmlStructuredError), m_structuredContext(xmlStructuredErrorContext),
          m_generic(xmlGenericError), m_genericContext(xmlGenericErrorContext)
    {
        xmlSetStructuredErrorFunc(this, &LibxmlErrorCapture::onError);
        xmlSetGenericErrorFunc(this, &LibxmlErrorCapture::onGenericError);
    }
    ~LibxmlErrorCapture()
    {
        xmlSetStructuredErrorFunc(m_structuredContext, m_structured);
        xmlSetGenericErrorFunc(m_genericContext, m_generic);
    }
    LibxmlErrorCapture(const LibxmlErrorCapture&) = delete;
    LibxmlErrorCapture& operator=(const LibxmlErrorCapture&) = delete;

    const std::string& first() const { return m_first; }

private:
    static void onError(void* self, xmlErrorPtr error)
    {
        auto* capture = static_cast<LibxmlErrorCapture*>(self);
        if (!capture->m_first.empty() || !error || error->level < XML_ERR_ERROR)
            return;
        std::string message = error->message ? error->message : "unknown error";
        while (!message.empty() && (message.back() == '\n' || message.back() == ' '))
            message.pop_back();
        capture->m_first = "line " + std::to_string(error->line) + ": " + message;
    }
    static void onGenericError(void*, const char*, ...) {}

    xmlStructuredErrorFunc m_structured;
    void* m_structuredContext;
    xmlGenericErrorFunc m_generic;
    void* m_genericContext;
    std::string m_first;
};

// A description names nothing outside itself: no external entity or DTD is ever loaded, for any parser
// of the process (the GenICam library's too).
xmlParserInputPtr refuseExternalEntity(const char*, const char*, xmlParserCtxtPtr)
{
    return nullptr;
}

void keepExternalEntitiesOff()
{
    static std::once_flag once;
    std::call_once(once, [] { xmlSetExternalEntityLoader(&refuseExternalEntity); });
}

struct DocumentDeleter
{
    void operator()(xmlDoc* doc) const { xmlFreeDoc(doc); }
};

bool named(const xmlNode* node, const char* name)
{
    return node->type == XML_ELEMENT_NODE && xmlStrcmp(node->name, BAD_CAST name) == 0;
}

std::string attribute(const xmlNode* node, const char* name)
{
    xmlChar* value = xmlGetProp(node, BAD_CAST name);
    if (!value)
        return std::string();
    std::string result(reinterpret_cast<const char*>(value));
    xmlFree(value);
    return result;
}

std::string text(const xmlNode* node)
{
    xmlChar* content = xmlNodeGetContent(node);
    if (!content)
        return std::string();
    std::string result(reinterpret_cast<const char*>(content));
    xmlFree(content);
    const auto first = result.find_first_not_of(" \t\r\n");
    if (first == std::string::npos)
        return std::string();
    const auto last = result.find_last_not_of(" \t\r\n");
    return result.substr(first, last - first + 1);
}

std::string tagOf(const xmlNode* node)
{
    return reinterpret_cast<const char*>(node->name);
}

// A pointer to another node: pValue, pMin, pAddress, pVariable, ... (the GenICam schema's "p" names).
bool isReference(const std::string& tag)
{
    return tag.size() > 1 && tag[0] == 'p' && tag[1] >= 'A' && tag[1] <= 'Z';
}

// References the GenICam library does not follow to evaluate a value: category members, the features a
// selector selects, the nodes whose change invalidates a cache. Loops through them are harmless.
bool isEvaluated(const std::string& tag)
{
    return tag != "pFeature" && tag != "pSelected" && tag != "pInvalidator";
}

// Elements with a Name attribute that are parts of a node rather than nodes.
bool isPart(const std::string& tag)
{
    return isReference(tag) || tag == "Constant" || tag == "Expression";
}

// Where an enumeration's entry is kept: a key no reference can name, as a node name has no '/'.
std::string entryKey(const std::string& enumeration, const std::string& entry)
{
    return enumeration + '/' + entry;
}

bool isFormulaNode(const std::string& tag)
{
    return tag == "SwissKnife" || tag == "IntSwissKnife" || tag == "Converter" || tag == "IntConverter";
}

bool isIntegerFormulaNode(const std::string& tag)
{
    return tag == "IntSwissKnife" || tag == "IntConverter";
}

bool isFormulaElement(const std::string& tag)
{
    return tag == "Formula" || tag == "FormulaTo" || tag == "FormulaFrom" || tag == "Expression";
}

std::string sizeText(std::size_t bytes)
{
    return std::to_string(bytes) + " bytes";
}

// Reads at most limit + 1 bytes of an open file; false with the reason when reading fails.
bool readAll(int fd, std::size_t limit, std::string* data, std::string* reason)
{
    data->clear();
    char buffer[65536];
    for (;;) {
        const ssize_t n = ::read(fd, buffer, sizeof buffer);
        if (n < 0) {
            if (errno == EINTR)
                continue;
            *reason = std::string("cannot be read: ") + std::strerror(errno);
            return false;
        }
        if (n == 0)
            return true;
        data->append(buffer, static_cast<std::size_t>(n));
        if (data->size() > limit)
            return true;
    }
}

bool isZip(const std::string& data)
{
    return data.size() >= 4 && data.compare(0, 4, "PK\x03\x04", 4) == 0;
}

// Why libzip could not take a zip file apart, in the words of the message the user gets.
std::string zipProblem(zip_error_t* error)
{
    switch (zip_error_code_zip(error)) {
    case ZIP_ER_NOZIP:
        return "not a zip archive";
    case ZIP_ER_INCONS:
        return "its table of contents contradicts its content";
    case ZIP_ER_CRC:
        return "its content does not match its checksum";
    case ZIP_ER_COMPNOTSUPP:
        return "packed with a compression method that is not supported";
    case ZIP_ER_ENCRNOTSUPP:
    case ZIP_ER_NOPASSWD:
    case ZIP_ER_WRONGPASSWD:
        return "encrypted";
    default:
        return zip_error_strerror(error);
    }
}

// The description inside a zip file: its first .xml file. A zip file is input from outside like the
// description itself, so it is taken apart by libzip, which checks every offset and size the archive
// states, and the unpacked size is capped as it is read: the size the archive announces may lie.
bool unzip(std::string* data, std::string* reason)
{
    zip_error_t error;
    zip_error_init(&error);
    zip_source_t* source = zip_source_buffer_create(data->data(), data->size(), 0, &error);
    zip_t* archive = source ? zip_open_from_source(source, ZIP_RDONLY, &error) : nullptr;
    if (!archive) {
        *reason = "a zip file that cannot be read: " + zipProblem(&error);
        if (source)
            zip_source_free(source);
        zip_error_fini(&error);
        return false;
    }
    zip_error_fini(&error);
    const zip_int64_t count = zip_get_num_entries(archive, 0);
    zip_int64_t found = -1;
    std::string name;
    for (zip_int64_t i = 0; i < count && found < 0; ++i) {
        const char* entry = zip_get_name(archive, static_cast<zip_uint64_t>(i), 0);
        const std::size_t length = entry ? std::strlen(entry) : 0;
        if (length > 4 && g_ascii_strcasecmp(entry + length - 4, ".xml") == 0) {
            found = i;
            name = entry;
        }
    }
    bool ok = false;
    // The archive reads from *data until it is discarded, so the unpacked text waits here.
    std::string content;
    if (found < 0) {
        *reason = "a zip file without a description (.xml) in it";
    } else if (zip_file_t* file = zip_fopen_index(archive, static_cast<zip_uint64_t>(found), 0)) {
        char buffer[65536];
        zip_int64_t n = 0;
        while (content.size() <= GenicamDescription::kMaxFileSize &&
               (n = zip_fread(file, buffer, sizeof buffer)) > 0)
            content.append(buffer, static_cast<std::size_t>(n));
        if (content.size() > GenicamDescription::kMaxFileSize) {
            *reason = "a zip file whose " + name + " unpacks to more than " +
                      sizeText(GenicamDescription::kMaxFileSize) + "; such descriptions are refused";
        } else if (n < 0) {
            *reason =
                "a zip file whose " + name + " cannot be unpacked: " + zipProblem(zip_file_get_error(file));
        } else if (content.empty()) {
            *reason = "a zip file whose " + name + " is empty";
        } else {
            ok = true;
        }
        zip_fclose(file);
    } else {
        *reason = "a zip file whose " + name + " cannot be unpacked: " + zipProblem(zip_get_error(archive));
    }
    zip_discard(archive);
    if (ok)
        data->swap(content);
    return ok;
}

// A loop among a formula node's sub-expressions ("A -> B -> A"), or empty. Iterative: a node may have
// as many sub-expressions as the description gives it.
std::string expressionLoop(const std::unordered_map<std::string, std::string>& expressions)
{
    std::unordered_map<std::string, std::vector<std::string>> uses;
    for (const auto& [name, text] : expressions) {
        std::string reason;
        if (auto formula = Formula::parse(text, &reason))
            for (const std::string& variable : formula->variables())
                if (expressions.count(variable))
                    uses[name].push_back(variable);
    }
    std::unordered_map<std::string, int> state; // 1 open, 2 done
    for (const auto& entry : expressions) {
        if (state[entry.first])
            continue;
        std::vector<std::pair<std::string, std::size_t>> stack{{entry.first, 0}};
        state[entry.first] = 1;
        while (!stack.empty()) {
            auto& [name, next] = stack.back();
            const auto& used = uses[name];
            if (next < used.size()) {
                const std::string target = used[next++];
                if (state[target] == 1) {
                    std::string loop;
                    for (const auto& frame : stack)
                        loop += frame.first + " -> ";
                    return loop + target;
                }
                if (state[target] == 0) {
                    state[target] = 1;
                    stack.emplace_back(target, 0);
                }
                continue;
            }
            state[name] = 2;
            stack.pop_back();
        }
    }
    return std::string();
}

} // namespace

GenicamDescription::GenicamDescription() = default;
GenicamDescription::~GenicamDescription() = default;

bool GenicamDescription::loadFile(const std::string& path, std::string* error)
{
    auto fail = [&](const std::string& what) {
        if (error)
            *error = path + ": " + what;
        return false;
    };
    if (path.empty()) {
        if (error)
            *error = "no description file given";
        return false;
    }
    // Without blocking: a pipe opens at once, and is then refused for what it is.
    const int fd = ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    if (fd < 0) {
        const int e = errno;
        if (e == ENOENT || e == ENOTDIR || e == ENAMETOOLONG || e == ELOOP)
            return fail(std::strerror(e));
        return fail(std::string("cannot be read: ") + std::strerror(e));
    }
    struct stat info;
    std::string problem;
    std::string data;
    if (::fstat(fd, &info) != 0)
        problem = std::string("cannot be read: ") + std::strerror(errno);
    else if (S_ISDIR(info.st_mode))
        problem = "is a folder, not a description file";
    else if (S_ISFIFO(info.st_mode))
        problem = "is a pipe, not a description file";
    else if (S_ISCHR(info.st_mode) || S_ISBLK(info.st_mode))
        problem = "is a device, not a description file";
    else if (S_ISSOCK(info.st_mode))
        problem = "is a socket, not a description file";
    else if (!S_ISREG(info.st_mode))
        problem = "is not a regular file";
    else if (static_cast<std::uint64_t>(info.st_size) > kMaxFileSize)
        problem = "is " + sizeText(static_cast<std::size_t>(info.st_size)) + "; descriptions above " +
                  sizeText(kMaxFileSize) + " are refused";
    else
        readAll(fd, kMaxFileSize, &data, &problem);
    ::close(fd);
    if (!problem.empty())
        return fail(problem);
    if (data.size() > kMaxFileSize)
        return fail("is larger than " + sizeText(kMaxFileSize) + "; such descriptions are refused");
    if (data.empty())
        return fail("is empty");
    if (isZip(data) && !unzip(&data, &problem))
        return fail("is " + problem);
    return load(data.data(), data.size(), path, error);
}

bool GenicamDescription::load(const char* data, std::size_t size, const std::string& origin,
                              std::string* error)
{
    m_nodes.clear();
    m_names.clear();
    m_index.clear();
    m_formulas.clear();
    m_usedBy.clear();
    m_registersByAddress.clear();
    m_registersAnywhere.clear();
    m_xml.clear();
    if (size > kMaxFileSize) {
        if (error)
            *error = origin + ": the description is " + sizeText(size) + "; descriptions above " +
                     sizeText(kMaxFileSize) + " are refused";
        return false;
    }
    std::string zipped;
    if (size >= 4 && std::memcmp(data, "PK\x03\x04", 4) == 0) {
        zipped.assign(data, size);
        std::string reason;
        if (!unzip(&zipped, &reason)) {
            if (error)
                *error = origin + ": the description is " + reason;
            return false;
        }
        data = zipped.data();
        size = zipped.size();
    }
    if (!parse(data, size, origin, error))
        return false;
    findCycles();
    spreadProblems();
    return true;
}

bool GenicamDescription::parse(const char* data, std::size_t size, const std::string& origin,
                               std::string* error)
{
    auto fail = [&](const std::string& what) {
        if (error)
            *error = origin + ": " + what;
        return false;
    };
    keepExternalEntitiesOff();
    std::unique_ptr<xmlDoc, DocumentDeleter> doc;
    std::string parseError;
    {
        LibxmlErrorCapture capture;
        // Internal entities are resolved as XML says (the GenICam library leaves them out); nothing is
        // fetched from the network or the disk.
        doc.reset(xmlReadMemory(data, static_cast<int>(size), origin.c_str(), nullptr,
                                XML_PARSE_NONET | XML_PARSE_NOENT | XML_PARSE_NOWARNING));
        parseError = capture.first();
    }
    if (!doc)
        return fail("not well-formed XML (" +
                    (parseError.empty() ? std::string("unknown error") : parseError) + ")");
    const xmlNode* top = xmlDocGetRootElement(doc.get());
    if (!top || !named(top, "RegisterDescription"))
        return fail(std::string("not a GenICam description (its top element is <") +
                    (top ? reinterpret_cast<const char*>(top->name) : "") + ">, not <RegisterDescription>)");
    m_vendor = attribute(top, "VendorName");
    m_model = attribute(top, "ModelName");

    bool hasRoot = false;
    bool rewritten = false;
    // References by name, resolved once every node is known.
    std::vector<std::vector<std::string>> uses;
    std::vector<std::vector<std::string>> invalidators; // pInvalidator, by name
    std::vector<std::pair<int, std::string>> owners;    // each enumeration entry and its enumeration
    // Nodes may be nested (a node defined inside another's element), so walk the whole document.
    std::vector<xmlNode*> pending{const_cast<xmlNode*>(top)};
    while (!pending.empty()) {
        xmlNode* element = pending.back();
        pending.pop_back();
        for (xmlNode* child = element->last; child; child = child->prev) {
            if (child->type == XML_ELEMENT_NODE)
                pending.push_back(child);
        }
        if (element == top)
            continue;
        const std::string tag = tagOf(element);
        const std::string name = attribute(element, "Name");
        if (name.empty() || isPart(tag) || isFormulaElement(tag))
            continue;
        const int index = static_cast<int>(m_nodes.size());
        // The GenICam library keeps the last node of a name, and does not name an enumeration's entries
        // at all (an entry may share its name with a command); so do we.
        if (tag == "EnumEntry") {
            const std::string owner = element->parent ? attribute(element->parent, "Name") : std::string();
            m_index[entryKey(owner, name)] = index;
            owners.emplace_back(index, owner);
        } else
            m_index[name] = index;
        m_names.push_back(name);
        m_nodes.emplace_back();
        uses.emplace_back();
        invalidators.emplace_back();
        Node& node = m_nodes.back();
        node.tag = tag;
        node.line = static_cast<int>(xmlGetLineNo(element));
        if (tag == "Category" && name == "Root")
            hasRoot = true;
        const bool formulaNode = isFormulaNode(tag);
        Formulas formulas;
        formulas.integer = isIntegerFormulaNode(tag);
        std::vector<std::pair<xmlNode*, std::string>> formulaTexts;
        for (xmlNode* child = element->children; child; child = child->next) {
            if (child->type != XML_ELEMENT_NODE)
                continue;
            const std::string childTag = tagOf(child);
            if (isReference(childTag)) {
                const std::string target = text(child);
                if (isEvaluated(childTag) && !target.empty())
                    uses.back().push_back(target);
                if (childTag == "pAddress" || childTag == "pIndex")
                    node.dynamicAddress = true;
                if (childTag == "pInvalidator" && !target.empty())
                    invalidators.back().push_back(target);
                if (childTag == "pIsDone")
                    node.isDone = target;
                else if (childTag == "pValue")
                    node.value = target;
                else if (childTag == "pLength")
                    node.length = target;
                else if (childTag == "pVariable")
                    formulas.variables[attribute(child, "Name")] = target;
            } else if (childTag == "Sign") {
                node.sign = text(child);
            } else if (childTag == "Endianess") {
                node.endianess = text(child);
            } else if (childTag == "PollingTime") {
                node.pollingMs = std::atoi(text(child).c_str());
            } else if (childTag == "Address") {
                // A register's address is the sum of its Address elements, unless a node gives part
                // of it (pAddress, pIndex): then it is known only when read.
                char* end = nullptr;
                const std::string literal = text(child);
                const long long part = std::strtoll(literal.c_str(), &end, 0);
                if (end && *end == '\0' && !literal.empty())
                    node.address = node.address < 0 && !node.dynamicAddress ? part : node.address + part;
                else
                    node.dynamicAddress = true;
            } else if (childTag == "Length") {
                node.bytes = std::atoll(text(child).c_str());
                const long long length = std::atoll(text(child).c_str());
                if ((length > kMaxRegisterLength || length < 0) && node.problem.empty())
                    node.problem = "its register is " + text(child) + " bytes long; registers above " +
                                   std::to_string(kMaxRegisterLength) + " bytes are not read";
            } else if (formulaNode && childTag == "Constant") {
                formulas.constants[attribute(child, "Name")] = text(child);
            } else if (formulaNode && isFormulaElement(childTag)) {
                formulaTexts.emplace_back(child, childTag);
            }
        }
        if (!formulaNode)
            continue;
        bool divides = false;
        for (const auto& [child, childTag] : formulaTexts) {
            std::string reason;
            const std::string formulaText = text(child);
            auto formula = Formula::parse(formulaText, &reason);
            if (!formula) {
                if (node.problem.empty())
                    node.problem = "its " + childTag + " \"" + formulaText + "\" does not parse: " + reason;
                continue;
            }
            for (const std::string& variable : formula->variables()) {
                const std::string base = variable.substr(0, variable.find('.'));
                const bool known = formulas.variables.count(base) || formulas.constants.count(base) ||
                                   base == "TO" || base == "FROM";
                bool expression = false;
                for (const auto& other : formulaTexts)
                    expression = expression ||
                                 (other.second == "Expression" && attribute(other.first, "Name") == base);
                if (!known && !expression && node.problem.empty())
                    node.problem = "its formula uses " + variable + ", which the node does not define";
            }
            if (formula->divides()) {
                divides = true;
                if (formulas.integer) {
                    xmlChar* escaped = xmlEncodeSpecialChars(doc.get(), BAD_CAST formula->trapFree().c_str());
                    xmlNodeSetContent(child, escaped);
                    xmlFree(escaped);
                    rewritten = true;
                }
            }
            if (childTag == "Expression")
                formulas.constants[attribute(child, "Name")] = formulaText;
            else if (childTag != "FormulaTo")
                formulas.read.push_back(std::move(*formula));
        }
        // Sub-expressions that use each other without end would make the GenICam library recurse.
        const std::string loop = expressionLoop(formulas.constants);
        if (!loop.empty() && node.problem.empty())
            node.problem = "its expressions use each other without end: " + loop;
        formulas.from = node.value;
        if (divides && node.problem.empty())
            m_formulas.emplace(index, std::move(formulas));
    }
    if (!hasRoot)
        return fail("not a GenICam description (no category named Root)");

    for (std::size_t i = 0; i < m_nodes.size(); ++i) {
        Node& node = m_nodes[i];
        for (const std::string& target : uses[i]) {
            auto it = m_index.find(target);
            if (it == m_index.end()) {
                if (node.problem.empty())
                    node.problem = "it refers to " + target + ", which the description does not define";
                continue;
            }
            node.uses.push_back(it->second);
        }
        for (const std::string& target : invalidators[i]) {
            auto it = m_index.find(target);
            if (it != m_index.end())
                node.invalidators.push_back(it->second);
        }
    }

    for (const auto& [entry, owner] : owners) {
        auto it = m_index.find(owner);
        if (it != m_index.end())
            m_nodes[static_cast<std::size_t>(entry)].owner = it->second;
    }

    // The GenICam library resolves no entities, and reads the formulas as written: it gets the
    // description again, as parsed here, where either matters.
    const bool entities = doc->intSubset && doc->intSubset->entities &&
                          xmlHashSize(static_cast<xmlHashTablePtr>(doc->intSubset->entities)) > 0;
    if (rewritten || entities) {
        if (xmlDtd* dtd = doc->intSubset) {
            // Unlinking clears doc->intSubset; the declarations are resolved and go.
            xmlUnlinkNode(reinterpret_cast<xmlNode*>(dtd));
            xmlFreeDtd(dtd);
        }
        xmlChar* out = nullptr;
        int length = 0;
        xmlDocDumpMemoryEnc(doc.get(), &out, &length, "UTF-8");
        m_xml.assign(reinterpret_cast<const char*>(out), out ? static_cast<std::size_t>(length) : 0);
        xmlFree(out);
    } else {
        m_xml.assign(data, size);
    }
    return true;
}

// Tarjan's strongly connected components over the evaluation references, without recursion: a node in a
// component of more than one node, or one that uses itself, lies on a cycle.
void GenicamDescription::findCycles()
{
    const int count = static_cast<int>(m_nodes.size());
    std::vector<int> order(static_cast<std::size_t>(count), -1), low(static_cast<std::size_t>(count), 0);
    std::vector<bool> onStack(static_cast<std::size_t>(count), false);
    std::vector<int> stack;
    struct Frame
    {
        int node;
        std::size_t next;
    };
    std::vector<Frame> frames;
    int counter = 0;
    for (int start = 0; start < count; ++start) {
        if (order[static_cast<std::size_t>(start)] >= 0)
            continue;
        frames.push_back(Frame{start, 0});
        order[static_cast<std::size_t>(start)] = low[static_cast<std::size_t>(start)] = counter++;
        stack.push_back(start);
        onStack[static_cast<std::size_t>(start)] = true;
        while (!frames.empty()) {
            Frame& frame = frames.back();
            const auto v = static_cast<std::size_t>(frame.node);
            const std::vector<int>& uses = m_nodes[v].uses;
            if (frame.next < uses.size()) {
                const int w = uses[frame.next++];
                const auto wi = static_cast<std::size_t>(w);
                if (order[wi] < 0) {
                    order[wi] = low[wi] = counter++;
                    stack.push_back(w);
                    onStack[wi] = true;
                    frames.push_back(Frame{w, 0});
                } else if (onStack[wi]) {
                    low[v] = std::min(low[v], order[wi]);
                }
                continue;
            }
            if (low[v] == order[v]) {
                std::vector<int> component;
                int w = -1;
                do {
                    w = stack.back();
                    stack.pop_back();
                    onStack[static_cast<std::size_t>(w)] = false;
                    component.push_back(w);
                } while (w != frame.node);
                const bool selfLoop = std::find(uses.begin(), uses.end(), frame.node) != uses.end();
                if (component.size() > 1 || selfLoop) {
                    // Name one cycle through the component, from its first node back to it.
                    std::sort(component.begin(), component.end());
                    const int from = component.front();
                    // Kept per component: a description may hold many small loops.
                    std::unordered_map<int, int> previous{{from, -1}};
                    std::vector<int> queue{from};
                    bool closed = false;
                    int last = -1;
                    for (std::size_t q = 0; q < queue.size() && !closed; ++q) {
                        for (int next : m_nodes[static_cast<std::size_t>(queue[q])].uses) {
                            if (next == from) {
                                closed = true;
                                last = queue[q];
                                break;
                            }
                            if (!previous.count(next) &&
                                std::binary_search(component.begin(), component.end(), next)) {
                                previous[next] = queue[q];
                                queue.push_back(next);
                            }
                        }
                    }
                    std::vector<int> path;
                    for (int p = last; p >= 0; p = previous[p])
                        path.push_back(p);
                    std::reverse(path.begin(), path.end());
                    std::string cycle;
                    // Long cycles are named by their first nodes.
                    const std::size_t shown = std::min<std::size_t>(path.size(), 8);
                    for (std::size_t i = 0; i < shown; ++i)
                        cycle += m_names[static_cast<std::size_t>(path[i])] + " -> ";
                    cycle += path.size() > shown ? "... -> " + m_names[static_cast<std::size_t>(from)]
                                                 : m_names[static_cast<std::size_t>(from)];
                    for (int member : component) {
                        Node& node = m_nodes[static_cast<std::size_t>(member)];
                        node.problem = "its references loop: " + cycle;
                    }
                }
            }
            const int finished = frame.node;
            frames.pop_back();
            if (!frames.empty()) {
                const auto parent = static_cast<std::size_t>(frames.back().node);
                low[parent] = std::min(low[parent], low[static_cast<std::size_t>(finished)]);
            }
        }
    }
}

// A node that uses a node with a problem has it too: the GenICam library would meet it while
// evaluating. Each node names the first problem it reaches.
void GenicamDescription::spreadProblems()
{
    const std::size_t count = m_nodes.size();
    std::vector<std::vector<int>> usedBy(count);
    for (std::size_t i = 0; i < count; ++i)
        for (int target : m_nodes[i].uses)
            usedBy[static_cast<std::size_t>(target)].push_back(static_cast<int>(i));
    std::vector<int> queue;
    std::vector<int> source(count, -1);
    for (std::size_t i = 0; i < count; ++i) {
        if (!m_nodes[i].problem.empty()) {
            queue.push_back(static_cast<int>(i));
            source[i] = static_cast<int>(i);
        }
    }
    for (std::size_t q = 0; q < queue.size(); ++q) {
        const int from = queue[q];
        const int origin = source[static_cast<std::size_t>(from)];
        for (int user : usedBy[static_cast<std::size_t>(from)]) {
            const auto u = static_cast<std::size_t>(user);
            if (source[u] >= 0)
                continue;
            source[u] = origin;
            m_nodes[u].problem = "it depends on " + m_names[static_cast<std::size_t>(origin)] + ", and " +
                                 m_nodes[static_cast<std::size_t>(origin)].problem;
            queue.push_back(user);
        }
    }
}

bool GenicamDescription::isRegister(const std::string& tag)
{
    return tag == "IntReg" || tag == "MaskedIntReg" || tag == "FloatReg" || tag == "StringReg" ||
           tag == "Register" || tag == "StructReg" || tag == "StructEntry";
}

void GenicamDescription::indexDependencies()
{
    const std::size_t count = m_nodes.size();
    m_usedBy.assign(count, std::vector<int>());
    m_registersByAddress.clear();
    m_registersAnywhere.clear();
    m_longestRegister = 1;
    for (std::size_t i = 0; i < count; ++i) {
        const Node& node = m_nodes[i];
        for (int target : node.uses)
            m_usedBy[static_cast<std::size_t>(target)].push_back(static_cast<int>(i));
        // A node the description says a write to target invalidates changes with it, whether or
        // not its evaluation passes through target (a device computing one register from another).
        for (int target : node.invalidators)
            m_usedBy[static_cast<std::size_t>(target)].push_back(static_cast<int>(i));
        // An enumeration shows its entries' availability: it changes with them.
        if (node.owner >= 0)
            m_usedBy[i].push_back(node.owner);
        if (!isRegister(node.tag))
            continue;
        if (node.address >= 0 && !node.dynamicAddress) {
            m_registersByAddress.emplace(node.address, static_cast<int>(i));
            m_longestRegister =
                std::max<std::int64_t>(m_longestRegister, std::max<std::int64_t>(node.bytes, 1));
        } else {
            m_registersAnywhere.push_back(static_cast<int>(i));
        }
    }
    m_marks.assign(count, 0);
}

std::vector<int> GenicamDescription::affectedBy(int index)
{
    if (m_usedBy.size() != m_nodes.size())
        indexDependencies();
    std::vector<int> reached;
    auto reach = [&](int n) {
        if (n >= 0 && !m_marks[static_cast<std::size_t>(n)]) {
            m_marks[static_cast<std::size_t>(n)] = 1;
            reached.push_back(n);
        }
    };
    // What a write changes: the node and the nodes its value goes to (pValue after pValue).
    std::vector<int> written;
    for (int n = index; n >= 0 && !m_marks[static_cast<std::size_t>(n)];) {
        reach(n);
        written.push_back(n);
        const std::string& next = m_nodes[static_cast<std::size_t>(n)].value;
        n = next.empty() ? -1 : indexOf(next);
    }
    // Registers that may share bytes with a written one: a static range that overlaps (found by
    // address), or an address known only when read, which may be anywhere.
    for (int w : written) {
        const Node& target = m_nodes[static_cast<std::size_t>(w)];
        if (!isRegister(target.tag))
            continue;
        for (int other : m_registersAnywhere)
            reach(other);
        if (target.address < 0 || target.dynamicAddress) {
            for (const auto& entry : m_registersByAddress)
                reach(entry.second);
            continue;
        }
        const std::int64_t end = target.address + std::max<std::int64_t>(target.bytes, 1);
        for (auto it = m_registersByAddress.lower_bound(target.address - m_longestRegister + 1);
             it != m_registersByAddress.end() && it->first < end; ++it) {
            const Node& other = m_nodes[static_cast<std::size_t>(it->second)];
            if (other.address + std::max<std::int64_t>(other.bytes, 1) > target.address)
                reach(it->second);
        }
    }
    // And every node whose evaluation passes through any of them.
    for (std::size_t q = 0; q < reached.size(); ++q)
        for (int user : m_usedBy[static_cast<std::size_t>(reached[q])])
            reach(user);
    for (int n : reached)
        m_marks[static_cast<std::size_t>(n)] = 0;
    return reached;
}

const GenicamDescription::Node* GenicamDescription::entry(const std::string& enumeration,
                                                          const std::string& name) const
{
    return node(entryKey(enumeration, name));
}

const GenicamDescription::Node* GenicamDescription::node(const std::string& name) const
{
    auto it = m_index.find(name);
    return it == m_index.end() ? nullptr : &m_nodes[static_cast<std::size_t>(it->second)];
}

int GenicamDescription::indexOf(const std::string& name) const
{
    auto it = m_index.find(name);
    return it == m_index.end() ? -1 : it->second;
}

const GenicamDescription::Formulas* GenicamDescription::formulasAt(int index) const
{
    auto it = m_formulas.find(index);
    return it == m_formulas.end() ? nullptr : &it->second;
}

// The nodes a value's evaluation passes through, in an order where each node's own uses come first.
const GenicamDescription::Node& GenicamDescription::closureOf(int index)
{
    Node& node = m_nodes[static_cast<std::size_t>(index)];
    if (node.formulasKnown)
        return node;
    node.formulasKnown = true;
    if (!node.problem.empty())
        return node;
    std::vector<char> state(m_nodes.size(), 0); // 0 unseen, 1 open, 2 done
    std::vector<std::pair<int, std::size_t>> stack{{index, 0}};
    state[static_cast<std::size_t>(index)] = 1;
    while (!stack.empty()) {
        auto& [current, next] = stack.back();
        const std::vector<int>& uses = m_nodes[static_cast<std::size_t>(current)].uses;
        if (next < uses.size()) {
            const int w = uses[next++];
            if (state[static_cast<std::size_t>(w)] == 0) {
                state[static_cast<std::size_t>(w)] = 1;
                stack.emplace_back(w, 0);
            }
            continue;
        }
        const int done = current;
        stack.pop_back();
        state[static_cast<std::size_t>(done)] = 2;
        if (m_formulas.count(done))
            node.dividingFormulas.push_back(done);
        if (!m_nodes[static_cast<std::size_t>(done)].length.empty())
            node.lengthNodes.push_back(done);
        if (m_nodes[static_cast<std::size_t>(done)].dynamicAddress)
            node.dynamicAddressOnPath = true;
    }
    return node;
}

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
