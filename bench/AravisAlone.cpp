#include "AravisAlone.h"

#include "family/genicam/OfflineDevice.h"

#include <arv.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <iterator>

namespace vorn {
namespace bench {

namespace {

std::string readFile(const std::string& path)
{
    std::ifstream in(path, std::ios::binary);
    return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

void dumpNode(ArvGc* gc, const char* name, int depth, std::string& out)
{
    ArvGcNode* node = arv_gc_get_node(gc, name);
    if (!node)
        return;
    out.append(static_cast<std::size_t>(2 * depth), ' ');
    out += name;
    if (ARV_IS_GC_CATEGORY(node)) {
        out += '\n';
        for (const GSList* f = arv_gc_category_get_features(ARV_GC_CATEGORY(node)); f; f = f->next)
            dumpNode(gc, static_cast<const char*>(f->data), depth + 1, out);
        return;
    }
    if (ARV_IS_GC_FEATURE_NODE(node) && !ARV_IS_GC_COMMAND(node)) {
        GError* error = nullptr;
        const char* value = arv_gc_feature_node_get_value_as_string(ARV_GC_FEATURE_NODE(node), &error);
        out += "  ";
        out += value && !error ? value : "";
        g_clear_error(&error);
    }
    out += '\n';
}

} // namespace

double aravisParseMs(const std::string& path)
{
    const auto start = std::chrono::steady_clock::now();
    const std::string xml = readFile(path);
    ArvGc* gc = arv_gc_new(nullptr, xml.data(), xml.size());
    const double ms =
        std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
    if (!gc)
        return NAN;
    g_object_unref(gc);
    return ms;
}

int aravisDump(const std::string& path)
{
    std::string error;
    ArvDevice* device = core::models::genicam::OfflineDevice::create(readFile(path), &error);
    if (!device) {
        std::fprintf(stderr, "%s\n", error.c_str());
        return 1;
    }
    std::string out;
    dumpNode(core::models::genicam::OfflineDevice::genicamOf(device), "Root", 0, out);
    std::fwrite(out.data(), 1, out.size(), stdout);
    g_object_unref(device);
    return 0;
}

} // namespace bench
} // namespace vorn
