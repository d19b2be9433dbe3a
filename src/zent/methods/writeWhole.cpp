#include "zent/methods/writeWhole.h"

#include "zent/math/require.h"

#include <filesystem>
#include <fstream>
#include <system_error>

namespace zent {

void writeWhole(const std::string& path, const std::string& bytes) {
    const std::string beside = path + ".part";
    std::ofstream file(beside, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    std::error_code problem;
    if (file) {
        std::filesystem::rename(beside, path, problem);
    }
    if (!file || problem) {
        std::error_code ignored;
        std::filesystem::remove(beside, ignored);
        fail("cannot write " + path);
    }
}

} // namespace zent
