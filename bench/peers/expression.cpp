// The expression machine beside Lua's interpreter.
#include "Pair.h"

#ifdef ZENT_HAVE_LUA

#include "zent/expression/Assembly.h"
#include "zent/expression/expression.h"

#include <lua.hpp>

#include <cmath>
#include <memory>

namespace zent::peers {

namespace {

using Floats = svec<float, 16>;
constexpr std::size_t kRounds = 1000;

// A chunk that returns a function of the input.
class Script {
public:
    explicit Script(const char* text) : state_(luaL_newstate(), lua_close) {
        luaL_openlibs(state_.get());
        const bool isRead = luaL_loadstring(state_.get(), text) == LUA_OK && lua_pcall(state_.get(), 0, 1, 0) == LUA_OK;
        requireAgreement(isRead ? "" : lua_tostring(state_.get(), -1), isRead);
    }

    double operator()(double input) const {
        lua_State* state = state_.get();
        lua_pushvalue(state, 1);
        lua_pushnumber(state, input);
        lua_call(state, 1, 1);
        const double result = lua_tonumber(state, -1);
        lua_pop(state, 1);
        return result;
    }

private:
    std::unique_ptr<lua_State, void (*)(lua_State*)> state_;
};

// Local 0 is the accumulator, local 1 counts the rounds down.
std::string loopOf(const std::string& start, const std::string& body, const std::string& result,
                   const std::string& functions = "") {
    return start + "\n const 1000\nagain: load 1\n const 0\n gt\n unless done\n" + body +
           "\n load 1\n const 1\n sub\n store 1\n pop\n back again\ndone: load 0\n" + result + " output 0\n end\n" +
           functions;
}

void compare(const char* name, const std::string& assembly, const char* lua, std::size_t work = kRounds) {
    const Program program = assemble(assembly);
    const Floats inputs{0.5f};
    const Script script(lua);
    const auto run = [&] { return expression(inputs, program.code, program.constants)[0]; };
    const float ours = run();
    const auto theirs = static_cast<float>(script(0.5));
    requireAgreement(name, std::abs(ours - theirs) <= 1e-6f * std::abs(theirs) && theirs != 0.0f);
    volatile double sink = 0.0;
    measure({name, "Lua 5.4", [&] { sink = static_cast<double>(run()); }, [&] { sink = script(0.5); }, work});
}

} // namespace

void expressionPeers() {
    compare("expression: arithmetic, a round",
            loopOf("const 0.0", "load 0\n input 0\n mul\n load 1\n const 0.125\n mul\n add\n store 0\n pop", ""),
            "return function(x) local a, i = 0.0, 1000\n"
            "while i > 0 do a = a * x + i * 0.125; i = i - 1 end return a end");
    compare("expression: calls, a round",
            loopOf("const 0.0", "load 0\n load 1\n call 2 mix\n store 0\n pop", "",
                   "mix: load 0\n load 1\n call 2 max\n input 0\n mul\n call 1 ceil\n return\n"),
            "local max, ceil = math.max, math.ceil\n"
            "return function(x) local function mix(a, i) return ceil(max(a, i) * x) end\n"
            "local a, i = 0.0, 1000\nwhile i > 0 do a = mix(a, i); i = i - 1 end return a end");
    compare("expression: vectors, a round",
            loopOf("const (1, 2, 3)",
                   "input 0\n load 0\n component 0\n load 0\n component 2\n vector\n call 1 unit\n const (0, 1, 0.5)\n"
                   " call 2 cross\n store 0\n pop",
                   " component 1\n"),
            "local V = {}\nV.__index = V\n"
            "local function vector(x, y, z) return setmetatable({x = x, y = y, z = z}, V) end\n"
            "function V.unit(v) local s = 1 / math.sqrt(v.x * v.x + v.y * v.y + v.z * v.z)\n"
            "return vector(s * v.x, s * v.y, s * v.z) end\n"
            "function V.cross(a, b)\n"
            "return vector(a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x) end\n"
            "return function(x) local axis, a, i = vector(0, 1, 0.5), vector(1, 2, 3), 1000\n"
            "while i > 0 do a = vector(x, a.x, a.z):unit():cross(axis); i = i - 1 end return a.y end");
    // One that runs once, as most of a scene's do: the call itself and the copies of its arguments count.
    compare("expression: twelve operations once",
            "input 0\n const 2.0\n mul\n call 1 sin\n const 0.5\n mul\n const 1.0\n add\n store 0\n load 0\n input 0\n"
            " sub\n const 3.0\n div\n add\n output 0\n end",
            "local sin = math.sin\nreturn function(x) local a = sin(x * 2.0) * 0.5 + 1.0\n"
            "return a + (a - x) / 3.0 end",
            1);
}

} // namespace zent::peers

#else

namespace zent::peers {

void expressionPeers() {}

} // namespace zent::peers

#endif
