// Any text is a program or an error; a program's listing assembles to it, and it runs to an end, an error of its
// arithmetic, or the end of its budget.
#include "zent/expression/compileExpression.h"
#include "zent/expression/VM.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

namespace {

constexpr std::uint64_t kInstructions = 20000;

// What compiled code may come to: loops without end and divisions by zero are the program's own.
bool isExpected(const std::string& text) {
    return text.rfind("integer ", 0) == 0 || text.rfind("the expression runs more than", 0) == 0;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string text(data, data + size);
    const zent::ExpressionNames names = zent::namesInExpression(text);
    const zent::CompiledExpression compiled = zent::compileExpression(text, names.inputs, names.outputs, 24.0);
    if (compiled.error) {
        if (compiled.error->line < 1 || compiled.error->column < 1 || zent::toText(*compiled.error).empty()) {
            std::abort();
        }
        return 0;
    }
    const zent::Program again = zent::assemble(zent::listing(compiled.program, compiled.marks, text));
    if (again.code != compiled.program.code || again.constants.size() != compiled.program.constants.size()) {
        std::abort();
    }
    try {
        zent::VM machine(std::vector<unsigned char>(again.code), std::vector<zent::Value>(again.constants));
        machine.executeAtMost(kInstructions, zent::VM::Floats(names.inputs.size(), 1.5f));
    } catch (const std::runtime_error& error) {
        if (!isExpected(error.what())) {
            std::abort();
        }
    }
    return 0; // what else is thrown ends the fuzzer: compiled code never runs beyond its end or mixes types
}
