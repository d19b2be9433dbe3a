// Any manifest is read as the JSON library reads it: the same records, or the same error, however small the pieces are
// in which it is read. The first byte tells their size.
#include "zent/check/readManifest.h"

#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

namespace {

using zent::json;

struct Outcome {
    std::vector<std::string> records;
    std::string error;
};

std::string dumped(const json& record) {
    return record.dump(-1, ' ', false, json::error_handler_t::replace) + record.type_name();
}

template <class Read>
Outcome outcomeOf(Read read) {
    Outcome outcome;
    try {
        read(outcome.records);
    } catch (const json::exception& error) {
        outcome = {{}, error.what()};
    }
    return outcome;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const std::size_t chunk = 2 + data[0];
    const std::string text(reinterpret_cast<const char*>(data) + 1, size - 1);
    const Outcome library = outcomeOf([&text](auto& records) {
        for (const json& record : json::parse(text)) {
            records.push_back(dumped(record));
        }
    });
    const Outcome manifest = outcomeOf([&](auto& records) {
        std::istringstream file(text);
        zent::Manifest whole(file, chunk);
        whole.forEach([&records](json&& record) {
            records.push_back(dumped(record));
            return true;
        });
        if (records.size() != whole.size()) {
            std::abort();
        }
        if (whole.isList() && whole.size() > 1) { // a stretch of it
            whole.forEach(whole.step(), 1, [&records, &whole](json&& record) {
                if (dumped(record) != records[whole.step()]) {
                    std::abort();
                }
                return true;
            });
        }
    });
    if (library.records != manifest.records || library.error != manifest.error) {
        std::abort();
    }
    return 0;
}
