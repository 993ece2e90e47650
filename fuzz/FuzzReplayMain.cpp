// Runs a fuzz target over stored inputs, without libFuzzer: every argument is a file or a folder of
// files (folders that do not exist are skipped). An input that still breaks the code aborts the run
// and so fails the test; the last "replaying" line names it.
#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <dirent.h>
#include <fstream>
#include <iterator>
#include <string>
#include <sys/stat.h>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);
extern "C" __attribute__((weak)) int LLVMFuzzerInitialize(int* argc, char*** argv);

namespace {

bool isFolder(const std::string& path)
{
    struct stat info;
    return ::stat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode);
}

bool isFile(const std::string& path)
{
    struct stat info;
    return ::stat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode);
}

void collect(const std::string& path, std::vector<std::string>& files)
{
    if (isFile(path)) {
        files.push_back(path);
        return;
    }
    if (!isFolder(path))
        return;
    std::vector<std::string> names;
    if (DIR* dir = ::opendir(path.c_str())) {
        while (const dirent* entry = ::readdir(dir)) {
            if (entry->d_name[0] != '.') // also leaves out notes such as .gitkeep
                names.push_back(entry->d_name);
        }
        ::closedir(dir);
    }
    std::sort(names.begin(), names.end());
    for (const std::string& name : names)
        collect(path + "/" + name, files);
}

} // namespace

int main(int argc, char** argv)
{
    if (LLVMFuzzerInitialize)
        LLVMFuzzerInitialize(&argc, &argv);
    std::vector<std::string> files;
    for (int i = 1; i < argc; ++i)
        collect(argv[i], files);
    if (files.empty()) {
        std::fprintf(stderr, "no inputs to replay\n");
        return 1;
    }
    for (const std::string& file : files) {
        std::ifstream in(file, std::ios::binary);
        const std::vector<char> data{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
        std::fprintf(stderr, "replaying %s (%zu bytes)\n", file.c_str(), data.size());
        LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(data.data()), data.size());
    }
    std::printf("replayed %zu inputs\n", files.size());
    return 0;
}
