#include "batch/readChecks.h"

#include "batch/stableHash.h"
#include "zentcheck/CommandFlags.h"

#include <fmt/format.h>
#include <glob.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <set>
#include <stdexcept>
#include <unordered_map>

namespace batch {

namespace {

using nlohmann::json;
namespace fs = std::filesystem;

constexpr std::size_t kMaxLineBytes = std::size_t{1} << 20;
const std::set<std::string> kKeys{"name", "manifest", "resource", "scene", "scenes", "flags"};

[[noreturn]] void fail(const std::string& text) {
    throw std::runtime_error(text);
}

/// A line without its end; nothing behind the last. Of a line that is too long `isTooLong`.
std::optional<std::string> nextLine(std::istream& list, bool& isTooLong) {
    std::string line;
    isTooLong = false;
    std::streambuf& buffer = *list.rdbuf();
    constexpr auto kEnd = std::char_traits<char>::eof();
    auto letter = buffer.sbumpc();
    if (letter == kEnd) {
        return std::nullopt;
    }
    for (; letter != kEnd && letter != '\n'; letter = buffer.sbumpc()) {
        isTooLong = isTooLong || line.size() == kMaxLineBytes;
        if (!isTooLong) {
            line += std::char_traits<char>::to_char_type(letter);
        }
    }
    return line;
}

std::string textOf(const json& value, const std::string& key) {
    if (!value.is_string() || value.get_ref<const std::string&>().empty()) {
        fail("\"" + key + "\" should be a text");
    }
    const auto& text = value.get_ref<const std::string&>();
    if (text.find('\0') != std::string::npos) {
        fail("\"" + key + "\" holds a zero");
    }
    return text;
}

/// The words of a flag that a check has of its own: "epsilon": 0.01.
void addFlag(const std::string& name, const json& value, std::vector<std::string>& words) {
    const auto& flags = host::commandFlags();
    const auto flag =
        std::find_if(flags.begin(), flags.end(), [&name](const auto& one) { return one.flag == "-" + name; });
    if (flag == flags.end()) {
        fail("there is no flag \"" + name + "\"");
    }
    std::string text = value.is_string() ? textOf(value, name) : value.is_primitive() ? value.dump() : "";
    const std::string problem = text.empty() ? "should be a text, a number, true or false" : flag->check(text);
    if (!problem.empty()) {
        fail("flag \"" + name + "\" " + problem);
    }
    words.insert(words.end(), {flag->flag, text});
}

class ListReader {
public:
    ListReader(fs::path folder, std::string path) : folder_(std::move(folder)), path_(std::move(path)) {}

    Checks read(std::istream& list) {
        bool isTooLong = false;
        while (const std::optional<std::string> line = nextLine(list, isTooLong)) {
            ++number_;
            try {
                if (isTooLong) {
                    fail("longer than any line can be");
                }
                if (line->find_first_not_of(" \t\r") != std::string::npos) {
                    readLine(*line);
                }
            } catch (const std::exception& error) {
                checks_.problems.push_back(fmt::format("{}: line {}: {}", path_, number_, error.what()));
            }
        }
        return std::move(checks_);
    }

private:
    void readLine(const std::string& text) {
        const json line = json::parse(text);
        if (!line.is_object()) {
            fail("no object");
        }
        for (const auto& item : line.items()) {
            if (kKeys.count(item.key()) == 0) {
                fail("unknown key \"" + item.key() + "\"");
            }
        }
        for (const char* key : {"name", "manifest"}) {
            if (!line.contains(key)) {
                fail("\"" + std::string(key) + "\" is missing");
            }
        }
        Check check;
        check.name = textOf(line["name"], "name");
        check.manifest = pathOf(line["manifest"], "manifest");
        if (line.contains("resource")) {
            check.resource = pathOf(line["resource"], "resource");
        }
        if (line.contains("flags")) {
            if (!line["flags"].is_object()) {
                fail("\"flags\" should be an object");
            }
            for (const auto& flag : line["flags"].items()) {
                addFlag(flag.key(), flag.value(), check.flags);
            }
        }
        std::vector<std::string> scenes;
        if (line.contains("scenes")) {
            if (line.contains("scene")) {
                fail("\"scene\" and \"scenes\" do not go together");
            }
            if (!line["scenes"].is_array() || line["scenes"].empty()) {
                fail("\"scenes\" should be a list of texts");
            }
            for (const json& scene : line["scenes"]) {
                scenes.push_back(pathOf(scene, "scenes"));
            }
        } else if (line.contains("scene")) {
            check.scene = pathOf(line["scene"], "scene");
        }
        add(std::move(check), scenes);
    }

    std::string pathOf(const json& value, const std::string& key) const {
        return (folder_ / textOf(value, key)).string();
    }

    /// A check of several scenes is one for each, named by the scene's file.
    void add(Check&& check, const std::vector<std::string>& scenes) {
        for (const std::string& scene : scenes) {
            Check one = check;
            one.scene = scene;
            one.name += "/" + fs::path(scene).stem().string();
            addOne(std::move(one));
        }
        if (scenes.empty()) {
            addOne(std::move(check));
        }
    }

    void addOne(Check&& check) {
        const auto [found, isNew] = lines_.try_emplace(check.name, number_);
        if (!isNew) {
            fail(fmt::format("the name \"{}\" is that of line {}, too", check.name, found->second));
        }
        checks_.checks.push_back(std::move(check));
    }

    fs::path folder_;
    std::string path_;
    std::size_t number_ = 0;
    std::unordered_map<std::string, std::size_t> lines_; ///< by the names of their checks
    Checks checks_;
};

std::vector<std::string> matching(const std::string& pattern) {
    glob_t found{};
    const int status = glob(pattern.c_str(), 0, nullptr, &found);
    std::vector<std::string> paths(found.gl_pathv, found.gl_pathv + found.gl_pathc);
    globfree(&found);
    if (status != 0 && status != GLOB_NOMATCH) {
        fail("cannot look for " + pattern);
    }
    return paths;
}

bool isPattern(const std::string& text) {
    return text.find_first_of("*?[") != std::string::npos;
}

std::vector<std::string> parts(const std::string& path) {
    std::vector<std::string> names;
    for (const fs::path& part : fs::path(path)) {
        names.push_back(part.string());
    }
    return names;
}

/// The folders and the file that the pattern's wildcards stand for: rigs/arm/manifest.json of rigs/*/manifest.json is
/// "arm".
std::string nameOf(const std::string& path, const std::vector<std::string>& pattern) {
    std::vector<std::string> names = parts(path);
    std::string name;
    for (std::size_t i = 0; i < std::min(names.size(), pattern.size()); ++i) {
        if (isPattern(pattern[i])) {
            const fs::path part(names[i]);
            const bool isFile = i + 1 == names.size() && part.extension() == ".json";
            name += (name.empty() ? "" : "/") + (isFile ? part.stem() : part).string();
        }
    }
    return name;
}

/// scene.json, or else scene.1.json, scene.2.json, ...
std::vector<std::string> scenesBeside(const fs::path& folder) {
    if (fs::exists(folder / "scene.json")) {
        return {(folder / "scene.json").string()};
    }
    std::vector<std::string> scenes;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
        const std::string file = entry.path().filename().string();
        if (file.rfind("scene.", 0) == 0 && entry.path().extension() == ".json") {
            scenes.push_back(entry.path().string());
        }
    }
    std::sort(scenes.begin(), scenes.end());
    return scenes;
}

} // namespace

Checks readList(std::istream& list, const std::string& folder, const std::string& path) {
    return ListReader(folder, path).read(list);
}

Checks findChecks(const std::string& pattern) {
    const std::vector<std::string> patternParts = parts(pattern);
    Checks found;
    std::set<std::string> names;
    const auto add = [&](const Check& check) {
        if (names.insert(check.name).second) {
            found.checks.push_back(check);
        } else {
            found.problems.push_back(
                fmt::format("{}: its name \"{}\" is that of another, too", check.manifest, check.name));
        }
    };
    for (const std::string& path : matching(pattern)) {
        const fs::path folder = fs::path(path).parent_path();
        Check check;
        check.name = nameOf(path, patternParts);
        check.manifest = path;
        if (fs::exists(folder / "resource.bin")) {
            check.resource = (folder / "resource.bin").string();
        }
        const std::vector<std::string> scenes = scenesBeside(folder.empty() ? "." : folder);
        const std::string name = check.name;
        for (const std::string& scene : scenes) {
            check.scene = scene;
            check.name = name + (scenes.size() > 1 ? "/" + fs::path(scene).stem().string() : "");
            add(check);
        }
        if (scenes.empty()) {
            add(check);
        }
    }
    if (found.checks.empty()) {
        fail("no manifest is found by " + pattern);
    }
    return found;
}

Checks readChecks(const std::string& listOrPattern) {
    std::error_code ignored;
    if (isPattern(listOrPattern) && !fs::exists(listOrPattern, ignored)) {
        return findChecks(listOrPattern);
    }
    std::ifstream list(listOrPattern, std::ios::binary);
    if (!list.is_open() || fs::is_directory(listOrPattern, ignored)) {
        fail("cannot open list " + listOrPattern);
    }
    return readList(list, fs::path(listOrPattern).parent_path().string(), listOrPattern);
}

bool isInShard(const std::string& name, unsigned int part, unsigned int parts) {
    return stableHash(name) % parts == part - 1;
}

} // namespace batch
