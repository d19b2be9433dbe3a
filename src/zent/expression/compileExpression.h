#pragma once

#include "zent/expression/Assembly.h"
#include "zent/expression/Tree.h"

#include <optional>
#include <string>
#include <vector>

namespace zent {

/// What a text became: a program, or the error that stopped it.
struct CompiledExpression {
    Program program;
    std::vector<SourceMark> marks; ///< where in the code each line of the text begins
    std::optional<ExpressionError> error;
};

/// Compiles a program of Maya's expression language, as docs/expressions.md tells it, for the expression machine.
/// `inputs` and `outputs` are the names of the slots, as the text writes them: "ball.translateX", "time", "frame";
/// .I[n] and .O[n] are the slots themselves. An attribute that is in both is an output. Where the inputs have "frame"
/// and no "time", `framesPerSecond` makes the time, in seconds, of the frame. Never throws for what a text holds, and
/// never gives a program that does something else than the text: what the machine cannot do is an error.
CompiledExpression compileExpression(const std::string& text, const std::vector<std::string>& inputs,
                                     const std::vector<std::string>& outputs, double framesPerSecond = 0.0);

/// The attributes that a text reads and writes, in the order in which it names them; those that it writes are outputs
/// only.
struct ExpressionNames {
    std::vector<std::string> inputs;
    std::vector<std::string> outputs;
    std::optional<ExpressionError> error;
};

ExpressionNames namesInExpression(const std::string& text);

/// "line 3, column 7: noise: ..."
std::string toText(const ExpressionError& error);

} // namespace zent
