#pragma once

#include <nlohmann/json.hpp>

#include <cstddef>
#include <functional>
#include <istream>
#include <vector>

namespace zent {

using json = nlohmann::json;

/// A window that slides over a file, from one value of its JSON to the next.
class TextWindow {
public:
    TextWindow(std::istream& file, std::size_t chunk);

    const char* at() const { return text_.data() + at_; }
    const char* end() const { return text_.data() + size_; }
    void moveTo(const char* at) { at_ = static_cast<std::size_t>(at - text_.data()); }
    /// The next letter that is no space, a zero at the end of the file.
    char next();
    /// Reads on; `at` and `end` are others then, and what stands before `at` goes. False at the end of the file.
    bool grow();

    /// Where `at` is in the file.
    std::size_t offset() const { return offset_ + at_; }
    void seek(std::size_t offset);
    /// Whether the file can be read only once, so that all of it is kept.
    bool keepsAll() const { return keepsAll_; }
    std::size_t chunk() const { return chunk_; }
    std::istream& file() { return *file_; }

private:
    std::istream* file_;
    std::size_t chunk_;
    bool keepsAll_;
    std::vector<char> text_;
    std::size_t size_ = 0; ///< of what has been read into it
    std::size_t at_ = 0;
    std::size_t offset_ = 0; ///< of the text's start
};

/// A manifest of right syntax. It is read twice, once for its syntax and once for its records, of which one at a time
/// is in memory; a file that cannot be read twice, such as a pipe, is kept. The file stays open while this is in use.
class Manifest {
public:
    static constexpr std::size_t kChunkBytes = std::size_t{1} << 16;

    /// Throws the JSON library's parse error. A chunk is what is read at once, at least two bytes.
    explicit Manifest(std::istream& file, std::size_t chunk = kChunkBytes);

    std::size_t size() const { return isList_ ? records_ : whole_.size(); }
    /// Hands each record to a function, until it returns false. A manifest that is no list is one as the JSON library
    /// walks it: an object by its values, anything else by itself, and only once.
    void forEach(const std::function<bool(json&&)>& take);

    bool isList() const { return isList_; }
    /// A stretch of a list begins at a record whose index is a multiple of this.
    std::size_t step() const { return step_; }
    /// The same for `count` records of a list, from `first` on.
    void forEach(std::size_t first, std::size_t count, const std::function<bool(json&&)>& take);
    /// Reads from another stream of the same file, in a process that shares the position of the first one.
    void readFrom(std::istream& file);

private:
    bool findRecords();
    void addMark();
    bool passRecord();
    bool findOddEnd(const char*& end);
    void passWithLibrary();
    json readRecord();

    TextWindow window_;
    bool isList_ = false;
    std::size_t records_ = 0;
    std::vector<std::size_t> marks_; ///< where each of every `step_` records begins
    std::size_t step_ = 1;
    json whole_; ///< where it is no list
};

} // namespace zent
