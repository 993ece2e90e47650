#include "family/genicam/GenicamDescription.h"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlerror.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <memory>
#include <sys/stat.h>
#include <vector>

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

} // namespace

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
    struct stat info;
    if (::stat(path.c_str(), &info) != 0)
        return fail(std::strerror(errno));
    if (S_ISDIR(info.st_mode))
        return fail("is a folder, not a description file");
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (!file)
        return fail(std::string("cannot be read: ") + std::strerror(errno));
    std::vector<char> data;
    char buffer[65536];
    std::size_t n = 0;
    while ((n = std::fread(buffer, 1, sizeof buffer, file)) > 0)
        data.insert(data.end(), buffer, buffer + n);
    const bool readFailed = std::ferror(file) != 0;
    const int readError = errno;
    std::fclose(file);
    if (readFailed)
        return fail(std::string("cannot be read: ") + std::strerror(readError));
    if (data.empty())
        return fail("is empty");
    return load(data.data(), data.size(), path, error);
}

bool GenicamDescription::load(const char* data, std::size_t size, const std::string& origin,
                              std::string* error)
{
    auto fail = [&](const std::string& what) {
        if (error)
            *error = origin + ": " + what;
        return false;
    };
    m_nodes.clear();
    std::unique_ptr<xmlDoc, DocumentDeleter> doc;
    std::string parseError;
    {
        LibxmlErrorCapture capture;
        // No network: a description must not make the parser fetch anything.
        doc.reset(xmlReadMemory(data, static_cast<int>(size), origin.c_str(), nullptr,
                                XML_PARSE_NONET | XML_PARSE_NOWARNING));
        parseError = capture.first();
    }
    if (!doc)
        return fail("not well-formed XML (" +
                    (parseError.empty() ? std::string("unknown error") : parseError) + ")");
    const xmlNode* top = xmlDocGetRootElement(doc.get());
    if (!top || !named(top, "RegisterDescription"))
        return fail(std::string("not a GenICam description (its top element is <") +
                    (top ? reinterpret_cast<const char*>(top->name) : "") + ">, not <RegisterDescription>)");

    bool hasRoot = false;
    // Nodes may be nested (a node defined inside another's element), so walk the whole document.
    std::vector<const xmlNode*> pending{top};
    while (!pending.empty()) {
        const xmlNode* element = pending.back();
        pending.pop_back();
        for (const xmlNode* child = element->last; child; child = child->prev) {
            if (child->type == XML_ELEMENT_NODE)
                pending.push_back(child);
        }
        if (element == top)
            continue;
        const std::string name = attribute(element, "Name");
        if (name.empty())
            continue;
        Node& node = m_nodes[name];
        node.tag = reinterpret_cast<const char*>(element->name);
        if (node.tag == "Category" && name == "Root")
            hasRoot = true;
        for (const xmlNode* child = element->children; child; child = child->next) {
            if (named(child, "pIsDone"))
                node.isDone = text(child);
            else if (named(child, "pValue"))
                node.value = text(child);
            else if (named(child, "Sign"))
                node.sign = text(child);
            else if (named(child, "Endianess"))
                node.endianess = text(child);
            else if (named(child, "PollingTime"))
                node.pollingMs = std::atoi(text(child).c_str());
        }
    }
    if (!hasRoot)
        return fail("not a GenICam description (no category named Root)");
    return true;
}

const GenicamDescription::Node* GenicamDescription::node(const std::string& name) const
{
    auto it = m_nodes.find(name);
    return it == m_nodes.end() ? nullptr : &it->second;
}

} // namespace genicam
} // namespace models
} // namespace core
} // namespace vorn
