#pragma once

#include "zent/expression/Tree.h"

#include <string>
#include <vector>

namespace zent {

/// What a program may read and write, by slot; framesPerSecond is 0 where nothing tells it.
struct ExpressionPlugs {
    const std::vector<std::string>& inputs;
    const std::vector<std::string>& outputs;
    double framesPerSecond = 0.0;
};

/// Finds what each name of a program stands for and the type of each value, makes conversions nodes of the tree, and
/// folds constants where the machine would compute the same. Refuses what reads the value of an earlier evaluation.
/// Throws ExpressionError.
void typeProgram(Statement& program, const ExpressionPlugs& plugs);

} // namespace zent
