#include "support/input.h"

#include "zent/values/resource.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t room);

namespace fuzz {

namespace {

std::size_t below(Random& random, std::size_t bound) {
    return bound == 0 ? 0 : random() % bound;
}

template <class T, std::size_t N>
const T& oneOf(Random& random, const T (&list)[N]) {
    return list[below(random, N)];
}

/// The value and all values within it; none that lies deep enough to exhaust the stack.
void gather(Json& value, std::vector<Json*>& values, int depth = 0) {
    values.push_back(&value);
    if (depth < 50) {
        for (Json& item : value) {
            if (value.is_structured()) {
                gather(item, values, depth + 1);
            }
        }
    }
}

Json oddValue(Random& random, const std::vector<std::string>& words) {
    static const char* const kTexts[] = {"0",
                                         "-0.0",
                                         "1",
                                         "-1",
                                         "2",
                                         "3",
                                         "4",
                                         "5",
                                         "7",
                                         "8",
                                         "12",
                                         "255",
                                         "2047",
                                         "6000",
                                         "65535",
                                         "65536",
                                         "2147483647",
                                         "-2147483648",
                                         "1e9",
                                         "4294967295",
                                         "4294967296",
                                         "1e20",
                                         "1e38",
                                         "-1e38",
                                         "1e300",
                                         "1e-5",
                                         "1e-30",
                                         "1e-45",
                                         "0.5",
                                         "-0.25",
                                         "3.14159",
                                         "1e5",
                                         "true",
                                         "false",
                                         "null",
                                         "\"\"",
                                         "[]",
                                         "{}",
                                         "[0,0,0]",
                                         "[0,1,0]",
                                         "[1,2]",
                                         "[1e38,-1e38,1e38]",
                                         "[0]",
                                         "[[[]]]",
                                         "[1,0,0,0,0,1,0,0,0,0,1,0,0,0,0,1]",
                                         "[0,0,0,0,0,0,0,0,0,0,0,0,0,0,0,0]",
                                         "[0,1,0,0,-1,0,0,0,0,0,1,0,5,6,7,1]",
                                         "[1e30,0,0,0,0,1e-30,0,0,0,0,1,0,0,0,0,1]",
                                         "[0,0,0,1]"};
    switch (below(random, 6)) {
    case 0:
        return {{"id", below(random, 8)}};
    case 1:
        return words.empty() ? Json("a") : Json(words[below(random, words.size())]);
    default:
        return Json::parse(oneOf(random, kTexts));
    }
}

Json tweakedNumber(const Json& value, Random& random) {
    const double number = value.get<double>();
    switch (below(random, 5)) {
    case 0:
        return value.is_number_integer() ? Json(value.get<std::int64_t>() / 2 + 1) : Json(-number);
    case 1:
        return number * 1.5;
    case 2:
        return value.is_number_integer() ? Json(static_cast<std::int64_t>(below(random, 9)) - 1) : Json(number + 1.0);
    case 3:
        return number - 1.0;
    default:
        return static_cast<double>(below(random, 1000)) * 0.01;
    }
}

/// An entry of a list or an object once or many times more, gone, or elsewhere.
void changeList(Json& list, Random& random) {
    if (list.is_object()) {
        const auto item = std::next(list.begin(), static_cast<std::ptrdiff_t>(below(random, list.size())));
        list.erase(item);
        return;
    }
    const std::size_t from = below(random, list.size());
    const Json copy = list[from];
    switch (below(random, 5)) {
    case 0:
    case 1:
        list.erase(list.begin() + static_cast<std::ptrdiff_t>(from));
        break;
    case 2:
        list.insert(list.begin() + static_cast<std::ptrdiff_t>(below(random, list.size() + 1)), copy);
        break;
    case 3:
        list.insert(list.end(), std::size_t{1} << below(random, 5), copy);
        break;
    default:
        std::swap(list[from], list[below(random, list.size())]);
    }
}

constexpr std::uint32_t kOddWords[] = {
    0,          1,          2,          3,          4,          5,          6,          7,          8,
    11,         16,         255,        6000,       0xFFFF,     0x10000,    0x55555556, 0x7FFFFFFF, 0x80000000,
    0xFFFFFFFF, 0x3F800000, 0xBF800000, 0x3F000000, 0x40000000, 0x40400000, 0x7F800000, 0xFF800000, 0x7FC00000,
    0x00000001, 0x00800000, 0x7F7FFFFF, 0xFF7FFFFF, 0x4B000000, 0x5F000000, 0x1E3CE508, 0x3727C5AC};

std::vector<std::string> blocksOf(const std::string& bytes) {
    std::vector<std::string> blocks;
    std::uint64_t count = 0;
    if (bytes.size() < 16) {
        return blocks;
    }
    std::memcpy(&count, bytes.data(), 8);
    if (count > bytes.size() / 8 - 2) {
        return blocks;
    }
    std::size_t at = 8 * (count + 2);
    for (std::uint64_t i = 0; i < count; ++i) {
        std::uint64_t ends[2] = {};
        std::memcpy(ends, bytes.data() + 8 * (i + 1), 16);
        const std::size_t size = std::min<std::uint64_t>(ends[1] - ends[0], bytes.size() - at);
        blocks.push_back(bytes.substr(at, size));
        at += size;
    }
    return blocks;
}

std::string fileOf(const std::vector<std::string>& blocks) {
    std::vector<std::uint64_t> head{blocks.size(), 8 * (blocks.size() + 2)};
    std::string content;
    for (const std::string& block : blocks) {
        head.push_back(head.back() + block.size());
        content += block;
    }
    return std::string(reinterpret_cast<const char*>(head.data()), 8 * head.size()) + content;
}

void changeBlock(std::string& block, Random& random) {
    switch (below(random, 5)) {
    case 0:
        block = mutateBytes(block, block.size() + 64);
        break;
    case 1:
        block.resize(below(random, 2 * block.size() + 16));
        break;
    case 2: { // a record more or less, of the sizes that there are
        static const std::size_t kSizes[] = {1, 4, 8, 12, 16, 32, 44};
        const std::size_t size = oneOf(random, kSizes);
        block.resize(below(random, 2) == 0 || block.size() < size ? block.size() + size : block.size() - size);
        break;
    }
    default:
        for (std::size_t times = 1 + below(random, 3); times != 0 && block.size() >= 4; --times) {
            std::memcpy(block.data() + 4 * below(random, block.size() / 4), &oneOf(random, kOddWords), 4);
        }
    }
}

} // namespace

std::vector<std::string> split(const std::uint8_t* data, std::size_t size, std::size_t count) {
    std::vector<std::string> files;
    const std::uint8_t* const end = data + size;
    while (files.size() + 1 < count) {
        const std::uint8_t* const stop = std::find(data, end, 0);
        files.emplace_back(data, stop);
        data = stop == end ? end : stop + 1;
    }
    files.emplace_back(data, end);
    return files;
}

std::string joined(const std::vector<std::string>& files) {
    std::string bytes = files.front();
    for (std::size_t i = 1; i < files.size(); ++i) {
        bytes += '\0' + files[i];
    }
    return bytes;
}

MemoryFile::MemoryFile()
    : descriptor_(memfd_create("fuzz", 0)), path_("/proc/self/fd/" + std::to_string(descriptor_)) {}

const std::string& MemoryFile::write(const std::string& content) {
    if (ftruncate(descriptor_, 0) != 0 ||
        pwrite(descriptor_, content.data(), content.size(), 0) != static_cast<ssize_t>(content.size())) {
        std::abort();
    }
    return path_;
}

bool isMostlyMissing(const std::string& resource) {
    constexpr std::uint64_t kMissing = std::uint64_t{1} << 12;
    std::uint64_t count = 0;
    std::uint64_t ends[2] = {};
    if (resource.size() < 16) {
        return false;
    }
    std::memcpy(&count, resource.data(), 8);
    if (count > resource.size() / 8 - 2) {
        return false;
    }
    std::memcpy(&ends[0], resource.data() + 8, 8);
    std::memcpy(&ends[1], resource.data() + 8 * (count + 1), 8);
    const std::uint64_t promised = ends[1] - ends[0];
    return promised > resource.size() + kMissing && promised <= resource.size() + zent::kMostMissingBytes;
}

std::string mutateJson(const std::string& text, Random& random, const std::vector<std::string>& words) {
    Json file = Json::parse(text, nullptr, false);
    if (file.is_discarded()) {
        return mutateBytes(text, text.size() + 64);
    }
    for (std::size_t times = std::size_t{1} << below(random, 3); times != 0; --times) {
        std::vector<Json*> values;
        gather(file, values);
        Json& value = *values[below(random, values.size())];
        const std::size_t kind = below(random, 8);
        if (value.is_structured() && !value.empty() && kind < 4) {
            changeList(value, random);
        } else if (value.is_number() && kind < 5) {
            value = tweakedNumber(value, random);
        } else if (value.is_string() && kind < 6 && !words.empty()) {
            value = words[below(random, words.size())];
        } else if (kind == 6) {
            const Json copy = *values[below(random, values.size())];
            value = copy;
        } else if (!value.is_structured() || kind == 7) {
            value = oddValue(random, words);
        }
    }
    return file.dump(-1, ' ', false, Json::error_handler_t::replace);
}

std::string mutateResource(const std::string& bytes, Random& random) {
    std::vector<std::string> blocks = blocksOf(bytes);
    if (blocks.empty() || below(random, 16) == 0) {
        return mutateBytes(bytes, bytes.size() + 64);
    }
    std::string& block = blocks[below(random, blocks.size())];
    switch (below(random, 12)) {
    case 0:
        block = blocks[below(random, blocks.size())];
        break;
    case 1:
        blocks.push_back(std::string(block));
        break;
    case 2:
        std::swap(block, blocks[below(random, blocks.size())]);
        break;
    default:
        changeBlock(block, random);
    }
    return fileOf(blocks);
}

std::string mutateBytes(std::string bytes, std::size_t room) {
    const std::size_t size = bytes.size();
    bytes.resize(std::max<std::size_t>(room, 1));
    bytes.resize(LLVMFuzzerMutate(reinterpret_cast<std::uint8_t*>(bytes.data()), size, bytes.size()));
    return bytes;
}

std::size_t put(const std::vector<std::string>& files, std::uint8_t* data, std::size_t size, std::size_t room) {
    const std::string bytes = joined(files);
    if (bytes.size() > room) {
        return size;
    }
    std::copy(bytes.begin(), bytes.end(), data);
    return bytes.size();
}

} // namespace fuzz
