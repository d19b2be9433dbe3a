#pragma once

#include <nlohmann/json.hpp>

#include <string>

namespace batch {

/// The folder of a batch: a results file for each check, which is there whole or not at all. Several batches may work
/// in one folder at the same time, also on several machines.
class ResultsFolder {
public:
    /// Makes it. Throws std::runtime_error where that fails.
    explicit ResultsFolder(std::string path);

    /// The results of a check. Its name makes one name of a file: what may not stand there is written as %XX.
    std::string file(const std::string& name) const;
    /// Where this process writes them until they are whole.
    std::string temporaryFile(const std::string& name) const;
    /// The temporary file takes the place of the other. Throws std::runtime_error where that fails.
    void keep(const std::string& name) const;
    /// Removes the temporary file.
    void drop(const std::string& name) const;

    /// A name as that of a file in one folder, and as a terminal may show it.
    static std::string fileName(const std::string& name);
    /// The summary of a whole results file, else null.
    static nlohmann::json summaryOf(const std::string& path);

private:
    std::string path_;
    std::string mark_; ///< of this process
};

} // namespace batch
