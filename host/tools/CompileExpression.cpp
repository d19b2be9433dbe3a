#include "tools/CompileExpression.h"

#include "zent/expression/compileExpression.h"
#include "zent/math/require.h"

#include <fstream>
#include <ostream>
#include <sstream>
#include <vector>

namespace zent {

namespace {

std::vector<std::string> split(const std::string& list) {
    std::vector<std::string> names;
    std::istringstream text(list);
    for (std::string name; std::getline(text, name, ';');) {
        names.push_back(name);
    }
    return names;
}

void printSlots(const char* what, const std::vector<std::string>& names, std::ostream& out) {
    for (std::size_t slot = 0; slot < names.size(); ++slot) {
        out << "# " << what << ' ' << slot << ": " << names[slot] << '\n';
    }
}

void requireNoError(const std::string& file, const std::optional<ExpressionError>& error) {
    if (error) {
        fail(file + ": " + toText(*error));
    }
}

} // namespace

void printCompiledExpression(const std::string& file, const std::string& inputs, const std::string& outputs,
                             std::ostream& out) {
    std::ifstream stream(file);
    std::stringstream content;
    if (!stream || !(content << stream.rdbuf())) {
        fail("cannot read an expression from \"" + file + "\"");
    }
    const std::string text = content.str();
    ExpressionNames names;
    if (inputs.empty() && outputs.empty()) {
        names = namesInExpression(text);
        requireNoError(file, names.error);
    } else {
        names.inputs = split(inputs);
        names.outputs = split(outputs);
    }
    const CompiledExpression compiled = compileExpression(text, names.inputs, names.outputs);
    requireNoError(file, compiled.error);
    printSlots("input", names.inputs, out);
    printSlots("output", names.outputs, out);
    out << listing(compiled.program, compiled.marks, text);
}

} // namespace zent
