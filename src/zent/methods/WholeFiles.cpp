#include "zent/methods/WholeFiles.h"

#include "zent/math/require.h"

#include <fmt/format.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <system_error>

namespace zent {

namespace {

void remove(const std::string& path) {
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
}

bool isSame(const std::string& path, const std::string& other) {
    std::error_code ignored;
    const auto whole = [&](const std::string& one) { return std::filesystem::weakly_canonical(one, ignored); };
    return !other.empty() && whole(path) == whole(other);
}

std::string nameBeside(const std::string& path) {
    std::random_device random;
    return fmt::format("{}.{:08x}{:08x}.part", path, random(), random());
}

} // namespace

WholeFiles::~WholeFiles() {
    for (const File& file : files_) {
        remove(file.beside);
    }
}

void WholeFiles::add(const std::string& path, const std::string& bytes) {
    for (const std::string& input : inputs_) {
        if (isSame(path, input)) {
            fail("cannot write " + path + ": it is read, too");
        }
    }
    for (const File& file : files_) {
        if (isSame(path, file.path)) {
            fail("cannot write " + path + ": two files would have this name");
        }
    }
    std::error_code ignored;
    if (std::filesystem::is_directory(path, ignored)) {
        fail("cannot write " + path); // before any other file is moved
    }
    files_.push_back({path, nameBeside(path)});
    std::ofstream file(files_.back().beside, std::ios::binary);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    file.close();
    if (!file) {
        fail("cannot write " + path);
    }
}

void WholeFiles::put() {
    std::error_code problem;
    while (!files_.empty()) {
        std::filesystem::rename(files_.front().beside, files_.front().path, problem);
        if (problem) {
            fail("cannot write " + files_.front().path);
        }
        files_.erase(files_.begin());
    }
}

} // namespace zent
