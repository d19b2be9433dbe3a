// What the fuzzers of files share: an input that holds several files, each but the last ended by a zero byte, and
// mutations that keep their forms, since a mutation of single bytes hardly ever gets past a parser.
#pragma once

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace fuzz {

using Json = nlohmann::ordered_json;
using Random = std::minstd_rand;

/// The files of an input; those that it lacks are empty.
std::vector<std::string> split(const std::uint8_t* data, std::size_t size, std::size_t count);
std::string joined(const std::vector<std::string>& files);

/// A file without a place on the disk.
class MemoryFile {
public:
    MemoryFile();
    const std::string& write(const std::string& content); ///< the path
private:
    int descriptor_;
    std::string path_;
};

/// Whether a resource file leaves out so much of what its table promises that reading the zeros in its place would only
/// take time.
bool isMostlyMissing(const std::string& resource);

/// Changes values, entries and lists of a JSON text; `words` are texts worth trying.
std::string mutateJson(const std::string& text, Random& random, const std::vector<std::string>& words);
/// Changes the blocks of a resource file, and keeps its table right.
std::string mutateResource(const std::string& bytes, Random& random);
/// Changes bytes of any file.
std::string mutateBytes(std::string bytes, std::size_t room);

/// Writes what LLVMFuzzerCustomMutator returns; `fallback` bytes stay as they are where the files are too long.
std::size_t put(const std::vector<std::string>& files, std::uint8_t* data, std::size_t size, std::size_t room);

} // namespace fuzz
