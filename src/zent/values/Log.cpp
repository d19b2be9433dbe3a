#include "zent/values/Log.h"

#include <array>
#include <ctime>
#include <stdexcept>
#include <utility>

namespace zent {

Log& Log::instance(bool force) {
    static Log log;
    if (!force && !log.customPrintln_ && !log.stream_.is_open()) {
        log.stream_.clear();
        log.stream_.open(log.path_, std::ios::out | std::ios::trunc);
        if (!log.stream_.is_open()) {
            throw std::runtime_error("failed on creating log file " + log.path_);
        }
    }
    return log;
}

void Log::init(std::string path) {
    close();
    instance(true).path_ = std::move(path);
}

void Log::init(std::string directory, std::string name) {
    init(std::move(directory) + "/" + getTime(std::move(name)) + ".txt");
}

void Log::setCustomPrintln(std::function<void(std::string)> println) {
    instance(true).customPrintln_ = std::move(println);
}

void Log::println(std::string line) {
    Log& log = instance(false);
    if (log.customPrintln_) {
        log.customPrintln_(std::move(line));
    } else {
        log.stream_ << line << '\n' << std::flush;
    }
}

void Log::close() {
    Log& log = instance(true);
    if (log.stream_.is_open()) {
        log.stream_.close();
    }
    log.path_.clear();
    log.customPrintln_ = nullptr;
}

std::string Log::getTime(std::string format) {
    const std::time_t now = std::time(nullptr);
    const std::tm* local = std::localtime(&now);
    if (local == nullptr) {
        return {};
    }
    std::array<char, 27> buffer{};
    const std::size_t length = std::strftime(buffer.data(), 26, format.c_str(), local);
    return std::string(buffer.data(), length);
}

} // namespace zent
