// Random programs, evaluated here as they are made, and compiled and run: both must come to the same outputs. The rules
// of the language stand here once more, in their own words; a number in ZENT_GENERATED_PROGRAMS asks for more programs.
#include "zent/expression/compileExpression.h"
#include "zent/expression/VM.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <map>
#include <random>

namespace zent {
namespace {

struct Failed {}; // the program ends in an error of the machine
enum class Flow { On, Break, Continue };
using Vec = std::array<double, 3>;

struct Val {
    char type = 'i'; // i, f or v
    int i = 0;
    double f = 0.0;
    Vec v{};

    static Val of(int x) { return {'i', x, 0.0, {}}; }
    static Val of(double x) { return {'f', 0, x, {}}; }
    static Val of(Vec x) { return {'v', 0, 0.0, x}; }
    double number() const {
        return type == 'i' ? i : type == 'f' ? f : std::sqrt(v[0] * v[0] + v[1] * v[1] + v[2] * v[2]);
    }
    Vec vector() const { return type == 'v' ? v : Vec{number(), number(), number()}; }
    int integer() const {
        const double x = number();
        return type == 'i' ? i : x > -2147483648.0 && x < 2147483648.0 ? static_cast<int>(x) : INT32_MIN;
    }
    bool isTrue() const { return number() < 0.0 || number() > 0.0; }
    Val as(char to) const { return to == 'i' ? of(integer()) : to == 'f' ? of(number()) : of(vector()); }
};

int wrap(std::int64_t x) {
    return static_cast<int>(static_cast<std::uint32_t>(x));
}

Val arithmetic(char op, const Val& a, const Val& b) {
    const auto each = [&](auto f) {
        const Vec x = a.vector();
        const Vec y = b.vector();
        return Val::of(Vec{f(x[0], y[0]), f(x[1], y[1]), f(x[2], y[2])});
    };
    const bool isVector = a.type == 'v' || b.type == 'v';
    const bool isInteger = a.type == 'i' && b.type == 'i';
    if (isInteger && (op == '/' || op == '%') && (b.i == 0 || (b.i == -1 && a.i == INT32_MIN))) {
        throw Failed{};
    }
    switch (op) {
    case '+':
        return isVector    ? each([](double x, double y) { return x + y; })
               : isInteger ? Val::of(wrap(std::int64_t{a.i} + b.i))
                           : Val::of(a.number() + b.number());
    case '-':
        return isVector    ? each([](double x, double y) { return x - y; })
               : isInteger ? Val::of(wrap(std::int64_t{a.i} - b.i))
                           : Val::of(a.number() - b.number());
    case '*':
        if (a.type == 'v' && b.type == 'v') {
            return Val::of(a.v[0] * b.v[0] + a.v[1] * b.v[1] + a.v[2] * b.v[2]);
        }
        return isVector    ? each([](double x, double y) { return x * y; })
               : isInteger ? Val::of(wrap(std::int64_t{a.i} * b.i))
                           : Val::of(a.number() * b.number());
    case '/':
        return isVector    ? each([](double x, double y) { return x / y; })
               : isInteger ? Val::of(a.i / b.i)
                           : Val::of(a.number() / b.number());
    default:
        return isInteger ? Val::of(a.i % b.i) : Val::of(std::fmod(a.number(), b.number()));
    }
}

struct Memory {
    std::map<std::string, Val> variables;
    std::vector<float> inputs;
    std::vector<float> outputs;
};

// A piece of a program: its text, how closely its outermost operator binds (9 for none), its type, what it does.
struct Piece {
    std::string text;
    int rank;
    char type;
    std::function<Val(Memory&)> run;
};

struct Step {
    std::string text;
    std::function<Flow(Memory&)> run;
};

class Generator {
public:
    explicit Generator(unsigned seed) : random_(seed) {}

    static constexpr int kInputs = 3;
    static constexpr int kOutputs = 3;

    Step program() {
        std::vector<Step> steps;
        for (int slot = 0; slot < kOutputs; ++slot) {
            steps.push_back(output(slot, number(1)));
            written_ = slot + 1;
        }
        for (int i = below(6) + 1; i > 0; --i) {
            steps.push_back(statement(3));
        }
        for (int slot = 0; slot < kOutputs; ++slot) {
            steps.push_back(output(slot, value(2, "ifv"[below(3)])));
        }
        return sequence(std::move(steps));
    }

private:
    int below(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }

    static std::string bracket(const Piece& piece, int rank) {
        return piece.rank < rank ? "(" + piece.text + ")" : piece.text;
    }

    static Step sequence(std::vector<Step> steps) {
        std::string text;
        for (const Step& step : steps) {
            text += step.text;
        }
        return {text, [steps](Memory& m) {
                    for (const Step& step : steps) {
                        if (const Flow flow = step.run(m); flow != Flow::On) {
                            return flow;
                        }
                    }
                    return Flow::On;
                }};
    }

    static Step output(int slot, const Piece& p) {
        return {"o.x" + std::to_string(slot) + " = " + p.text + ";\n", [slot, p](Memory& m) {
                    m.outputs[static_cast<std::size_t>(slot)] = static_cast<float>(p.run(m).number());
                    return Flow::On;
                }};
    }

    // Statements. A variable is $<type><number>; what a block declares is gone behind it.

    Step declaration() {
        const char type = "ifv"[below(3)];
        const Piece p = value(2, "ifv"[below(3)]);
        const std::string name = std::string("$") + type + std::to_string(count_++);
        names_.push_back(name);
        const char* const word = type == 'i' ? "int " : type == 'f' ? "float " : "vector ";
        return {word + name + " = " + p.text + ";\n", [=](Memory& m) {
                    m.variables[name] = p.run(m).as(type);
                    return Flow::On;
                }};
    }

    Step block(int depth) {
        const auto names = names_;
        std::vector<Step> steps;
        for (int i = below(3) + 1; i > 0; --i) {
            steps.push_back(statement(depth));
        }
        names_ = names;
        Step body = sequence(std::move(steps));
        body.text = "{\n" + body.text + "}\n";
        return body;
    }

    Step statement(int depth) {
        const int kind = depth > 0 ? below(9) : below(4);
        if (kind < 2) {
            return declaration();
        }
        if (kind < 4) {
            const Piece p = below(2) == 0 ? assignment(2) : step();
            return {p.text + ";\n", [p](Memory& m) {
                        p.run(m);
                        return Flow::On;
                    }};
        }
        if (kind == 4) {
            return output(below(kOutputs), value(2, "ifv"[below(3)]));
        }
        if (kind < 7) {
            const Piece c = number(2);
            const Step yes = block(depth - 1);
            const Step no = below(2) == 0 ? Step{"", [](Memory&) { return Flow::On; }} : block(depth - 1);
            return {"if (" + c.text + ")\n" + yes.text + (no.text.empty() ? "" : "else " + no.text),
                    [=](Memory& m) { return c.run(m).isTrue() ? yes.run(m) : no.run(m); }};
        }
        return loop(depth);
    }

    Step loop(int depth) {
        const std::string name = "$n" + std::to_string(count_++); // no other statement writes it
        const int rounds = below(4);
        const bool exits = below(2) == 0;
        const bool breaks = below(2) == 0;
        const Piece c = number(2);
        Step body = block(depth - 1);
        std::string text = body.text;
        if (exits) {
            const char* const word = breaks ? "break" : "continue";
            text = "{\nif (" + c.text + ") " + word + ";\n" + text.substr(2);
        }
        const std::string end = std::to_string(rounds);
        const int form = below(3);
        if (form == 0) {
            text = "for (int " + name + " = 0; " + name + " < " + end + "; " + name + "++)\n" + text;
        } else {
            text = "{\n" + name + "++;\n" + text.substr(2);
            text = "int " + name + " = 0;\n" +
                   (form == 1 ? "while (" + name + " < " + end + ")\n" + text
                              : "do\n" + text + "while (" + name + " < " + end + ");\n");
        }
        return {text, [=](Memory& m) {
                    for (int i = 0; i < (form == 2 ? std::max(rounds, 1) : rounds); ++i) {
                        if (exits && c.run(m).isTrue()) {
                            if (breaks) {
                                break;
                            }
                            continue;
                        }
                        body.run(m);
                    }
                    return Flow::On;
                }};
    }

    // Values

    Piece value(int depth, char type) { return type == 'v' ? vector(depth) : number(depth); }

    Piece variable(char type) {
        std::vector<std::string> fitting;
        for (const std::string& name : names_) {
            if (name[1] == type) {
                fitting.push_back(name);
            }
        }
        if (fitting.empty()) {
            return literal(type);
        }
        const std::string name = fitting[static_cast<std::size_t>(below(static_cast<int>(fitting.size())))];
        return {name, 9, type, [name](Memory& m) { return m.variables.at(name); }};
    }

    Piece literal(char type) {
        if (type == 'v') {
            const Vec v{below(5) - 2.0, below(9) * 0.25, below(3) * 1.0};
            std::string text = "<<";
            for (int i = 0; i < 3; ++i) {
                text += std::to_string(v[static_cast<std::size_t>(i)]) + (i < 2 ? ", " : ">>");
            }
            return {text, 9, 'v', [v](Memory&) { return Val::of(v); }};
        }
        if (type == 'f') {
            const double x = below(64) * 0.125;
            return {std::to_string(x), 9, 'f', [x](Memory&) { return Val::of(x); }};
        }
        const int x = below(20) == 0 ? 2147483647 - below(3) : below(8);
        return {std::to_string(x), 9, 'i', [x](Memory&) { return Val::of(x); }};
    }

    Piece leaf() {
        switch (below(6)) {
        case 0: {
            const int slot = below(kInputs);
            return {"in.x" + std::to_string(slot), 9, 'f', [slot](Memory& m) {
                        return Val::of(static_cast<double>(m.inputs[static_cast<std::size_t>(slot)]));
                    }};
        }
        case 1: {
            const int slot = below(kOutputs);
            return written_ <= slot
                       ? literal('f')
                       : Piece{"o.x" + std::to_string(slot), 9, 'f', [slot](Memory& m) {
                                   return Val::of(static_cast<double>(m.outputs[static_cast<std::size_t>(slot)]));
                               }};
        }
        case 2:
            return {below(2) == 0 ? "true" : "off", 9, 'i', nullptr};
        case 3:
            return literal("if"[below(2)]);
        default:
            return variable("if"[below(2)]);
        }
    }

    Piece filledLeaf() {
        Piece p = leaf();
        if (!p.run) {
            const int x = p.text == "true" ? 1 : 0;
            p.run = [x](Memory&) { return Val::of(x); };
        }
        return p;
    }

    Piece binary(const Piece& a, const char* op, int rank, const Piece& b, char type,
                 std::function<Val(const Val&, const Val&)> f) {
        return {bracket(a, rank) + " " + op + " " + bracket(b, rank + 1), rank, type, [=](Memory& m) {
                    const Val x = a.run(m);
                    const Val y = b.run(m);
                    return f(x, y);
                }};
    }

    static char wider(char a, char b) { return a == 'v' || b == 'v' ? 'v' : a == 'f' || b == 'f' ? 'f' : 'i'; }

    Piece number(int depth) {
        if (depth == 0) {
            return filledLeaf();
        }
        switch (below(11)) {
        case 0:
        case 1: {
            const Piece a = number(depth - 1);
            const Piece b = number(depth - 1);
            const char op = "+-*/%"[below(5)];
            const std::string text(1, op);
            return binary(a, text.c_str(), op == '+' || op == '-' ? 6 : 7, b, wider(a.type, b.type),
                          [op](const Val& x, const Val& y) { return arithmetic(op, x, y); });
        }
        case 2: {
            const char* const ops[] = {"<", "<=", ">", ">=", "==", "!="};
            const int op = below(6);
            return binary(number(depth - 1), ops[op], op < 4 ? 5 : 4, number(depth - 1), 'i',
                          [op](const Val& a, const Val& b) {
                              const bool less = a.number() < b.number();
                              const bool more = a.number() > b.number();
                              const bool results[] = {less, !more, more, !less, !less && !more, less || more};
                              return Val::of(results[op] ? 1 : 0);
                          });
        }
        case 3: {
            const Piece a = number(depth - 1);
            const Piece b = number(depth - 1);
            const bool isAnd = below(2) == 0;
            const int rank = isAnd ? 3 : 2;
            return {bracket(a, rank) + (isAnd ? " && " : " || ") + bracket(b, rank + 1), rank, 'i', [=](Memory& m) {
                        const bool first = a.run(m).isTrue();
                        return Val::of((isAnd ? first && b.run(m).isTrue() : first || b.run(m).isTrue()) ? 1 : 0);
                    }};
        }
        case 4: {
            const Piece a = number(depth - 1);
            if (below(2) == 0) {
                return {"!" + bracket(a, 8), 8, 'i', [a](Memory& m) { return Val::of(a.run(m).isTrue() ? 0 : 1); }};
            }
            return {"- " + bracket(a, 8), 8, a.type, [a](Memory& m) {
                        const Val x = a.run(m);
                        return x.type == 'i' ? Val::of(wrap(-std::int64_t{x.i})) : Val::of(-x.f);
                    }};
        }
        case 5: {
            const Piece c = number(depth - 1);
            const Piece a = number(depth - 1);
            const Piece b = number(depth - 1);
            const char type = wider(a.type, b.type);
            return {bracket(c, 2) + " ? " + bracket(a, 2) + " : " + bracket(b, 2), 1, type,
                    [=](Memory& m) { return (c.run(m).isTrue() ? a : b).run(m).as(type); }};
        }
        case 6:
            return assignment(depth - 1);
        case 7:
            return call(depth);
        case 8: {
            const Piece v = vector(depth - 1);
            const int c = below(3);
            return {(v.rank == 9 && v.text[0] == '$' ? v.text : "(" + v.text + ")") + "." + "xyz"[c], 9, 'f',
                    [=](Memory& m) { return Val::of(v.run(m).v[static_cast<std::size_t>(c)]); }};
        }
        case 9: {
            const Piece a = value(depth - 1, "fv"[below(2)]);
            return {"int(" + a.text + ")", 9, 'i', [a](Memory& m) { return a.run(m).as('i'); }};
        }
        default: {
            const bool isDot = below(2) == 0;
            const Piece a = vector(depth - 1);
            const Piece b = vector(depth - 1);
            return isDot ? binary(a, "*", 7, b, 'f', [](const Val& x, const Val& y) { return arithmetic('*', x, y); })
                         : binary(a, "!=", 4, b, 'i', [](const Val& x, const Val& y) {
                               bool differ = false;
                               for (std::size_t i = 0; i < 3; ++i) {
                                   differ = differ || x.v[i] < y.v[i] || x.v[i] > y.v[i];
                               }
                               return Val::of(differ ? 1 : 0);
                           });
        }
        }
    }

    Piece vector(int depth) {
        if (depth == 0) {
            return variable('v');
        }
        switch (below(5)) {
        case 0: {
            const Piece a = number(depth - 1);
            const Piece b = number(depth - 1);
            const Piece c = value(depth - 1, "fv"[below(2)]);
            return {"<<" + a.text + ", " + b.text + ", (" + c.text + ")>>", 9, 'v', [=](Memory& m) {
                        const double x = a.run(m).number();
                        const double y = b.run(m).number();
                        return Val::of(Vec{x, y, c.run(m).number()});
                    }};
        }
        case 1: {
            const char op = "+-"[below(2)];
            const std::string text(1, op);
            const bool isMixed = below(3) == 0;
            return binary(isMixed ? number(depth - 1) : vector(depth - 1), text.c_str(), 6, vector(depth - 1), 'v',
                          [op](const Val& a, const Val& b) { return arithmetic(op, a, b); });
        }
        case 2:
            return binary(vector(depth - 1), "*", 7, number(depth - 1), 'v',
                          [](const Val& a, const Val& b) { return arithmetic('*', a, b); });
        case 3:
            return binary(vector(depth - 1), "^", 7, vector(depth - 1), 'v', [](const Val& a, const Val& b) {
                return Val::of(Vec{a.v[1] * b.v[2] - a.v[2] * b.v[1], a.v[2] * b.v[0] - a.v[0] * b.v[2],
                                   a.v[0] * b.v[1] - a.v[1] * b.v[0]});
            });
        default: {
            const Piece a = vector(depth - 1);
            return {"- " + bracket(a, 8), 8, 'v', [a](Memory& m) {
                        const Vec v = a.run(m).v;
                        return Val::of(Vec{-v[0], -v[1], -v[2]});
                    }};
        }
        }
    }

    Piece call(int depth) {
        const Piece a = number(depth - 1);
        const Piece b = number(depth - 1);
        const Piece c = number(depth - 1);
        switch (below(4)) {
        case 0:
            return {"clamp(" + a.text + ", " + b.text + ", " + c.text + ")", 9, 'f', [=](Memory& m) {
                        const double low = a.run(m).number();
                        const double high = b.run(m).number();
                        const double x = c.run(m).number();
                        return Val::of(x < low ? low : x < high ? x : high);
                    }};
        case 1:
            return {"max(" + a.text + ", " + b.text + ")", 9, 'f', [=](Memory& m) {
                        const double x = a.run(m).number();
                        const double y = b.run(m).number();
                        return Val::of(y > x ? y : x);
                    }};
        case 2:
            return {"abs(" + a.text + ")", 9, a.type, [=](Memory& m) {
                        const Val x = a.run(m);
                        return x.type == 'i' ? Val::of(wrap(std::abs(std::int64_t{x.i}))) : Val::of(std::abs(x.f));
                    }};
        default:
            return {"sign(" + a.text + ")", 9, 'f', [=](Memory& m) {
                        const double x = a.run(m).number();
                        return Val::of(x > 0.0 ? 1.0 : x < 0.0 ? -1.0 : 0.0);
                    }};
        }
    }

    Piece assignment(int depth) {
        const Piece target = variable("ifv"[below(3)]);
        if (target.text[0] != '$' || target.type == 'v') {
            return filledLeaf();
        }
        const Piece p = number(depth);
        const std::string name = target.text;
        const char op = "=+-*/%"[below(6)];
        const char type = target.type;
        return {"(" + name + " " + (op == '=' ? "" : std::string(1, op)) + "= " + p.text + ")", 9, type,
                [=](Memory& m) {
                    const Val old = m.variables.at(name);
                    const Val x = p.run(m);
                    return m.variables[name] = (op == '=' ? x : arithmetic(op, old, x)).as(type);
                }};
    }

    Piece step() {
        const Piece target = variable("if"[below(2)]);
        if (target.text[0] != '$') {
            return filledLeaf();
        }
        const std::string name = target.text;
        const int by = below(2) == 0 ? 1 : -1;
        const bool isBefore = below(2) == 0;
        const std::string op = by == 1 ? "++" : "--";
        return {isBefore ? op + name : name + op, 9, target.type, [=](Memory& m) {
                    const Val old = m.variables.at(name);
                    m.variables[name] = arithmetic('+', old, Val::of(by));
                    return isBefore ? m.variables[name] : old;
                }};
    }

    std::mt19937 random_;
    std::vector<std::string> names_;
    int count_ = 0;
    int written_ = 0; // outputs so far
};

bool isSame(float a, float b) {
    return a == b || (std::isnan(a) && std::isnan(b));
}

TEST(GeneratedPrograms, ComeToWhatTheLanguageSays) {
    const char* const asked = std::getenv("ZENT_GENERATED_PROGRAMS");
    const int programs = asked != nullptr ? std::atoi(asked) : 600;
    int ran = 0;
    int failed = 0;
    for (unsigned seed = 1; ran < programs; ++seed) {
        ASSERT_LT(seed, 20U * static_cast<unsigned>(programs)) << "most programs are refused";
        const Step program = Generator(seed).program();
        CompiledExpression compiled =
            compileExpression(program.text, {"in.x0", "in.x1", "in.x2"}, {"o.x0", "o.x1", "o.x2"});
        if (compiled.error) {
            ASSERT_TRUE(compiled.error->problem == "an integer is divided by zero") << toText(*compiled.error) << '\n'
                                                                                    << program.text;
            continue;
        }
        ++ran;
        Memory memory{{}, {0.5f, -3.25f, 7.0f}, {0.0f, 0.0f, 0.0f}};
        bool fails = false;
        try {
            program.run(memory);
        } catch (const Failed&) {
            fails = true;
            ++failed;
        }
        VM machine(std::move(compiled.program.code), std::move(compiled.program.constants));
        try {
            const VM::Floats outputs = machine.execute({0.5f, -3.25f, 7.0f});
            ASSERT_FALSE(fails) << program.text;
            for (std::size_t slot = 0; slot < memory.outputs.size(); ++slot) {
                ASSERT_TRUE(isSame(outputs[slot], memory.outputs[slot]))
                    << "seed " << seed << ", output " << slot << ": " << outputs[slot] << ", not "
                    << memory.outputs[slot] << '\n'
                    << program.text;
            }
        } catch (const std::runtime_error& error) {
            ASSERT_TRUE(fails && std::strstr(error.what(), "integer ") == error.what()) << error.what() << '\n'
                                                                                        << program.text;
        }
    }
    EXPECT_LT(failed, programs / 4); // which say little
}

} // namespace
} // namespace zent
