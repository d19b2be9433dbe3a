#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>
#include <string_view>
#include <type_traits>

namespace host {

/// What a worker has to say.
enum class Said : unsigned char {
    beginStretch, ///< its number
    progress,     ///< the index of a record, and its name
    line,         ///< of the log
    warning,
    error,
    record,     ///< how a record ended, and its line of the results
    endStretch, ///< how the run of a stretch ended
    failure     ///< the exception that ended it
};

/// Numbers and texts in a row, which one process puts together and another takes apart.
class Message {
public:
    Message() = default;
    explicit Message(Said kind) : kind_(kind) {}
    Message(Said kind, std::string&& bytes) : kind_(kind), bytes_(std::move(bytes)) {}

    Said kind() const { return kind_; }
    const std::string& bytes() const { return bytes_; }

    template <class T>
    Message& add(T number) {
        static_assert(std::is_arithmetic_v<T> || std::is_enum_v<T>);
        bytes_.append(reinterpret_cast<const char*>(&number), sizeof(T));
        return *this;
    }
    Message& addText(std::string_view text) {
        add(text.size());
        bytes_ += text;
        return *this;
    }

    template <class T>
    T take() {
        T number{};
        std::memcpy(&number, next(sizeof(T)), sizeof(T));
        return number;
    }
    std::string_view takeText() {
        const auto size = take<std::size_t>();
        return {next(size), size};
    }

private:
    const char* next(std::size_t size) {
        if (bytes_.size() - at_ < size) {
            throw std::runtime_error("a worker process told something that cannot be read");
        }
        at_ += size;
        return bytes_.data() + at_ - size;
    }

    Said kind_ = Said::failure;
    std::string bytes_;
    std::size_t at_ = 0;
};

} // namespace host
