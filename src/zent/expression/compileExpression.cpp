#include "zent/expression/compileExpression.h"

#include "zent/expression/Emitter.h"
#include "zent/expression/Typer.h"

#include <algorithm>
#include <set>

namespace zent {

namespace {

// The names of a tree, in the order of the text.
class Names {
public:
    void collect(const Statement& statement) {
        if (statement.expression) {
            collect(*statement.expression);
        }
        if (statement.value) {
            collect(*statement.value);
        }
        for (const StatementPtr& body : statement.bodies) {
            collect(*body);
        }
    }

    // Direct slots first, so that each keeps its number.
    std::vector<std::string> inputs() const {
        std::vector<std::string> names;
        for (const std::string& name : all_) {
            if (written_.count(name) == 0 && !isSlot(name, ".O[")) {
                names.push_back(name);
            }
        }
        return withSlots(names, ".I[");
    }

    std::vector<std::string> outputs() const {
        std::vector<std::string> names;
        for (const std::string& name : all_) {
            if (written_.count(name) != 0 || isSlot(name, ".O[")) {
                names.push_back(name);
            }
        }
        return withSlots(names, ".O[");
    }

private:
    static bool isSlot(const std::string& name, const char* list) { return name.compare(0, 3, list) == 0; }

    static std::vector<std::string> withSlots(const std::vector<std::string>& names, const char* list) {
        constexpr std::size_t kSlots = 256;
        std::vector<std::string> slots;
        for (std::size_t slot = 0, last = 0; slot < kSlots; ++slot) {
            const std::string name = list + std::to_string(slot) + "]";
            if (std::find(names.begin(), names.end(), name) != names.end()) {
                for (; last <= slot; ++last) {
                    slots.push_back(list + std::to_string(last) + "]");
                }
            }
        }
        std::copy_if(names.begin(), names.end(), std::back_inserter(slots),
                     [list](const std::string& name) { return !isSlot(name, list); });
        return slots;
    }

    void collect(const Expression& expression) {
        if (expression.kind == Expression::Kind::Name) {
            add(expression.name);
        }
        const bool writes =
            expression.kind == Expression::Kind::Assign || expression.kind == Expression::Kind::PostStep;
        if (writes && expression.operands[0]->kind == Expression::Kind::Name) {
            written_.insert(expression.operands[0]->name);
        }
        for (const ExpressionPtr& operand : expression.operands) {
            collect(*operand);
        }
    }

    void add(const std::string& name) {
        const bool isAttribute = name.find('.') != std::string::npos || name == "time" || name == "frame";
        if (isAttribute && seen_.insert(name).second) {
            all_.push_back(name);
        }
    }

    std::vector<std::string> all_;
    std::set<std::string> seen_;
    std::set<std::string> written_;
};

} // namespace

CompiledExpression compileExpression(const std::string& text, const std::vector<std::string>& inputs,
                                     const std::vector<std::string>& outputs, double framesPerSecond) {
    CompiledExpression compiled;
    try {
        const StatementPtr program = parseExpression(text);
        typeProgram(*program, {inputs, outputs, framesPerSecond});
        compiled.program = emitProgram(*program, compiled.marks);
    } catch (const ExpressionError& error) {
        compiled.program = {};
        compiled.marks.clear();
        compiled.error = error;
    }
    return compiled;
}

ExpressionNames namesInExpression(const std::string& text) {
    ExpressionNames names;
    try {
        Names found;
        found.collect(*parseExpression(text));
        names.inputs = found.inputs();
        names.outputs = found.outputs();
    } catch (const ExpressionError& error) {
        names.error = error;
    }
    return names;
}

std::string toText(const ExpressionError& error) {
    return "line " + std::to_string(error.line) + ", column " + std::to_string(error.column) + ": " + error.thing +
           ": " + error.problem;
}

} // namespace zent
