// Any list of checks is read to its end: each line is a check or a problem, and no name leads out of the results'
// folder.
#include "batch/readChecks.h"
#include "batch/ResultsFolder.h"

#include <cstdlib>
#include <set>
#include <sstream>
#include <string>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    std::istringstream list(std::string(reinterpret_cast<const char*>(data), size));
    const batch::Checks checks = batch::readList(list, "folder", "list");
    std::set<std::string> names;
    for (const batch::Check& check : checks.checks) {
        const std::string file = batch::ResultsFolder::fileName(check.name);
        const bool isSafe = !file.empty() && file.front() != '.' && file.find('/') == std::string::npos &&
                            file.find('\n') == std::string::npos && file.size() < 200;
        if (!isSafe || !names.insert(file).second || check.flags.size() % 2 != 0) {
            std::abort();
        }
    }
    return 0;
}
