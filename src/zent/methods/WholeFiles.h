#pragma once

#include <string>
#include <utility>
#include <vector>

namespace zent {

/// Files that appear whole, and all of them or none: each is written beside its place, under a name that no other
/// writer has, and moved there once all are written.
class WholeFiles {
public:
    /// None of the files may stand in the place of an input.
    explicit WholeFiles(std::vector<std::string> inputs = {}) : inputs_(std::move(inputs)) {}
    WholeFiles(const WholeFiles&) = delete;
    WholeFiles& operator=(const WholeFiles&) = delete;
    ~WholeFiles();

    /// Throws std::runtime_error "cannot write PATH", also for the path of another file or of an input.
    void add(const std::string& path, const std::string& bytes);
    /// Moves the files to their places. Throws the same.
    void put();

private:
    struct File {
        std::string path;
        std::string beside;
    };
    std::vector<std::string> inputs_;
    std::vector<File> files_; ///< that are not in their places yet
};

} // namespace zent
