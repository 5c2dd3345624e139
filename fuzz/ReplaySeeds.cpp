// The main function of a target in a build without the fuzzer. It runs the target on every file of the given
// folders.
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

#include "FuzzTarget.h"

int main(int argumentCount, char** arguments)
{
    int replayed = 0;
    for (int i = 1; i < argumentCount; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(arguments[i])) {
            std::ifstream file(entry.path(), std::ios::binary);
            const std::string bytes{std::istreambuf_iterator<char>(file), {}};
            std::printf("%s\n", entry.path().filename().string().c_str());
            std::fflush(stdout);
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
            ++replayed;
        }
    }
    if (replayed == 0) {
        std::fprintf(stderr, "there are no seeds\n");
        return 1;
    }
    return 0;
}
