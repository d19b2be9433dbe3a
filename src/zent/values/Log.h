#pragma once

#include <fstream>
#include <functional>
#include <string>

namespace zent {

/// The one channel of run reports: lines go to a file, or to a function that the caller gave.
///
/// The file is opened by the first line, so that a run that logs nothing leaves none. Opening fails with
/// std::runtime_error "failed on creating log file PATH".
class Log {
public:
    /// The log; the file is opened if lines go to one, it is not open yet, and `force` is false.
    static Log& instance(bool force);

    /// Lines go to the file `path` from now on.
    static void init(std::string path);
    /// Lines go to `directory`/`name`.txt; `name` is a strftime format.
    static void init(std::string directory, std::string name);
    /// Lines go to a function from now on.
    static void setCustomPrintln(std::function<void(std::string)> println);
    /// One line, on disk at once.
    static void println(std::string line);
    /// Back to the start: no file, no function.
    static void close();

    /// The local time by a strftime format; empty where it fails or is longer than 25 characters.
    static std::string getTime(std::string format);

private:
    std::ofstream stream_;
    std::string path_;
    std::function<void(std::string)> customPrintln_;
};

} // namespace zent
