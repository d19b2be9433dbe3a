#include "tools/Disassemble.h"

#include "zent/expression/Assembly.h"
#include "zent/math/require.h"
#include "zent/values/resource.h"

#include <ostream>
#include <vector>

namespace zent {

void disassemble(const std::string& file, unsigned int block, std::optional<unsigned int> constantsBlock,
                 std::ostream& out) {
    ResourceStorage storage;
    storage.load(file);
    if (!storage.loaded) {
        fail("cannot open resource file \"" + file + "\"");
    }
    if (constantsBlock == block) {
        fail("block " + std::to_string(block) + " cannot be both the byte code and its constants");
    }
    out << disassemble(storage.get<std::vector<unsigned char>>(block),
                       constantsBlock ? &storage.get<std::vector<Value>>(*constantsBlock) : nullptr);
}

} // namespace zent
