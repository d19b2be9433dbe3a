#include "tools/Disassemble.h"

#include "zent/expression/Assembly.h"
#include "zent/math/require.h"
#include "zent/resource.h"

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
    // A copy, since a block cannot be read as a second type, and one number for both must say so and not dangle.
    const auto code = storage.get<std::vector<unsigned char>>(block);
    out << disassemble(code, constantsBlock ? &storage.get<std::vector<Value>>(*constantsBlock) : nullptr);
}

} // namespace zent
