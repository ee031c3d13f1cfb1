// Feeds a target every file of the given folders, once.
#include "fuzz/fuzz.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <vector>

int main(int argc, char** argv) {
    std::size_t fed = 0;
    for (int i = 1; i < argc; ++i) {
        std::vector<std::filesystem::path> files;
        for (const auto& e : std::filesystem::directory_iterator(argv[i])) files.push_back(e.path());
        std::sort(files.begin(), files.end());
        for (const auto& file : files) {
            std::printf("%s\n", file.filename().c_str());
            std::fflush(stdout); // the last one named is the one that fails
            std::ifstream in(file, std::ios::binary);
            const std::string all{std::istreambuf_iterator<char>(in), {}};
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(all.data()), all.size());
            ++fed;
        }
    }
    return fed > 0 ? 0 : 1;
}
