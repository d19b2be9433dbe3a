#include "batch/ResultsFolder.h"

#include "batch/stableHash.h"

#include <fmt/format.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string_view>
#include <system_error>
#include <utility>

namespace batch {

namespace {

constexpr std::size_t kMaxName = 160; // file names have 255 bytes at most
constexpr std::streamoff kMaxSummary = 1 << 26;
constexpr std::string_view kPlain = "._-+=@, ";

bool isPlain(char letter) {
    const auto byte = static_cast<unsigned char>(letter);
    return byte >= 0x80 || std::isalnum(byte) != 0 || kPlain.find(letter) != std::string_view::npos;
}

std::string hostName() {
    std::array<char, 65> name{};
    gethostname(name.data(), name.size() - 1);
    return name.data();
}

} // namespace

ResultsFolder::ResultsFolder(std::string path)
    : path_(std::move(path)), mark_(fmt::format("{}-{}.part", hostName(), getpid())) {
    std::error_code error;
    std::filesystem::create_directories(path_, error);
    if (error || !std::filesystem::is_directory(path_)) {
        throw std::runtime_error("cannot make folder " + path_ +
                                 (error ? ": " + error.message() : ": a file has its name"));
    }
}

std::string ResultsFolder::file(const std::string& name) const {
    return path_ + "/" + fileName(name) + ".jsonl";
}

std::string ResultsFolder::temporaryFile(const std::string& name) const {
    return path_ + "/." + fileName(name) + "." + mark_;
}

void ResultsFolder::keep(const std::string& name) const {
    std::error_code error;
    std::filesystem::rename(temporaryFile(name), file(name), error);
    if (error) {
        throw std::runtime_error("cannot write results file " + file(name) + ": " + error.message());
    }
}

void ResultsFolder::drop(const std::string& name) const {
    std::error_code ignored;
    std::filesystem::remove(temporaryFile(name), ignored);
}

std::string ResultsFolder::fileName(const std::string& name) {
    std::string text;
    for (const char letter : name) {
        const bool isHidden = letter == '.' && text.empty();
        text += isPlain(letter) && !isHidden ? std::string(1, letter)
                                             : fmt::format("%{:02X}", static_cast<unsigned char>(letter));
    }
    if (text.size() > kMaxName) {
        text = text.substr(0, kMaxName) + fmt::format("%{:016x}", stableHash(name)); // tells it from its like
    }
    return text;
}

nlohmann::json ResultsFolder::summaryOf(const std::string& path) {
    std::ifstream file(path, std::ios::binary | std::ios::ate);
    const std::streamoff size = file.is_open() ? static_cast<std::streamoff>(file.tellg()) : 0;
    // The last line, with its end, from behind the end of the one before.
    for (std::streamoff length = 1 << 14; size > 0 && length <= kMaxSummary; length *= 4) {
        const std::streamoff from = std::max(std::streamoff{0}, size - length);
        std::string tail(static_cast<std::size_t>(size - from), '\0');
        file.seekg(from);
        if (!file.read(tail.data(), static_cast<std::streamsize>(tail.size())) || tail.back() != '\n') {
            return nullptr;
        }
        const std::size_t before = tail.size() < 2 ? std::string::npos : tail.rfind('\n', tail.size() - 2);
        if (before == std::string::npos) {
            if (from == 0) {
                return nullptr; // a single line is no results file
            }
            continue;
        }
        nlohmann::json line =
            nlohmann::json::parse(tail.begin() + static_cast<std::ptrdiff_t>(before + 1), tail.end(), nullptr, false);
        const bool isSummary = line.is_object() && line.contains("summary") && line["summary"].is_object();
        return isSummary ? std::move(line["summary"]) : nlohmann::json();
    }
    return nullptr;
}

} // namespace batch
