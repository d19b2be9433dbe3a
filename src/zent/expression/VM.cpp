#include "zent/expression/VM.h"

#include "zent/expression/Builtin.h"
#include "zent/expression/Opcode.h"
#include "zent/math/require.h"

#include <cmath>
#include <limits>
#include <string>
#include <tuple>
#include <type_traits>

namespace zent {

namespace {

// Sums, differences and products of integers wrap around in 32 bits.
template <class Operation>
auto wrapping(Operation operation) {
    return [operation](auto a, auto b) {
        if constexpr (std::is_same_v<decltype(a), int> && std::is_same_v<decltype(b), int>) {
            return static_cast<int>(operation(static_cast<unsigned>(a), static_cast<unsigned>(b)));
        } else {
            return operation(static_cast<double>(a), static_cast<double>(b));
        }
    };
}

void requireDivisible(int a, int b, const char* operation) {
    if (b == 0) {
        fail(std::string("integer ") + operation + " of " + std::to_string(a) + " by zero in the expression");
    }
    if (b == -1 && a == std::numeric_limits<int>::min()) {
        fail(std::string("integer ") + operation + " of " + std::to_string(a) + " by -1 overflows in the expression");
    }
}

struct Divide {
    int operator()(int a, int b) const {
        requireDivisible(a, b, "division");
        return a / b;
    }
    template <class A, class B>
    double operator()(A a, B b) const {
        return static_cast<double>(a) / static_cast<double>(b);
    }
};

// Not the equality of doubles: NaN counts as equal to everything, since it is neither less nor greater.
struct Equal {
    template <class A, class B>
    bool operator()(A a, B b) const {
        return !(a < b) && !(a > b);
    }
};

[[noreturn]] void failOperands() {
    fail("Unreachable");
}

template <class T>
void assign(Value& value, T alternative) {
    value.emplace<T>(alternative);
}

// a b -> operation(a, b), for the four pairs of integers and doubles.
template <class Operation>
void combineNumbers(ValueStack& stack, Operation operation) {
    Value& a = stack.top(1);
    const Value& b = stack.top();
    const auto combineWith = [&](auto y) {
        if (const double* number = std::get_if<double>(&a)) {
            assign(a, operation(*number, y));
        } else if (const int* integer = std::get_if<int>(&a)) {
            assign(a, operation(*integer, y));
        } else {
            failOperands();
        }
    };
    if (const double* number = std::get_if<double>(&b)) {
        combineWith(*number);
    } else if (const int* integer = std::get_if<int>(&b)) {
        combineWith(*integer);
    } else {
        failOperands();
    }
    stack.pop();
}

void modulo(ValueStack& stack) {
    Value& a = stack.top(1);
    const Value& b = stack.top();
    const int* dividend = std::get_if<int>(&a);
    const int* divisor = std::get_if<int>(&b);
    if (dividend != nullptr && divisor != nullptr) {
        requireDivisible(*dividend, *divisor, "remainder");
        assign(a, *dividend % *divisor);
    } else {
        assign(a, std::fmod(toNumber(a), toNumber(b)));
    }
    stack.pop();
}

void negate(Value& value) {
    if (const int* integer = std::get_if<int>(&value)) {
        assign(value, static_cast<int>(0U - static_cast<unsigned>(*integer)));
    } else {
        assign(value, -as<double>(value));
    }
}

template <class Operation>
void combineBools(ValueStack& stack, Operation operation) {
    const bool b = stack.popAs<bool>();
    const bool a = stack.popAs<bool>();
    stack.push(operation(a, b));
}

void makeVector(ValueStack& stack) {
    const double z = stack.popNumber();
    const double y = stack.popNumber();
    const double x = stack.popNumber();
    stack.push(ValueVector{x, y, z});
}

double component(const ValueVector& vector, unsigned char operand) {
    return operand == 2 ? vector.z : operand == 1 ? vector.y : vector.x; // x for every other operand, too
}

struct Unmetered {
    void operator()() const {}
};

struct Budget {
    std::uint64_t instructions;
    std::uint64_t run = 0;

    void operator()() {
        if (run++ == instructions) {
            fail("the expression runs more than " + std::to_string(instructions) + " instructions");
        }
    }
};

// The byte code and the next byte to read. The one value that every instruction changes, so it is kept out of memory.
class Cursor {
public:
    Cursor(const std::vector<unsigned char>& code, int ip) : code_(code), ip_(static_cast<std::size_t>(ip)) {}

    int position() const { return static_cast<int>(ip_); }
    void moveTo(int position) { ip_ = static_cast<std::size_t>(position); }
    void jumpForward(std::size_t offset) { ip_ += offset; }
    void jumpBack(std::size_t offset) {
        if (offset > ip_) {
            fail("the jump back by " + std::to_string(offset) + " before code[" + std::to_string(ip_) +
                 "] leads out of the expression");
        }
        ip_ -= offset;
    }

    unsigned char readByte() { return code_.at(ip_++); }

    unsigned short readWord() {
        const unsigned high = readByte();
        return static_cast<unsigned short>(high << 8U | readByte());
    }

    // The item whose index is the operand byte.
    template <class List>
    const typename List::value_type& itemOf(const List& list, const char* name) {
        const std::size_t index = readByte();
        if (index >= list.size()) {
            requireIndex("code", ip_ - 1, index, list.size(), name);
        }
        return list[index];
    }

    const Value& constantOf(const std::vector<Value>& constants) {
        const Value& constant = itemOf(constants, "the list of constants");
        if (const auto* unknown = std::get_if<UnknownValue>(&constant)) {
            fail("the constant of code[" + std::to_string(ip_ - 1) + "] has the index " +
                 std::to_string(unknown->index) + ", the last one is 3");
        }
        return constant;
    }

private:
    const std::vector<unsigned char>& code_;
    std::size_t ip_;
};

// Behind a position, a jump forward stays within an int.
constexpr std::size_t kMaxCode = std::numeric_limits<int>::max() - 0x20000;

} // namespace

VM::VM(std::vector<unsigned char>&& code, std::vector<Value>&& constants)
    : code_(std::move(code)), constants_(std::move(constants)) {
    if (code_.size() > kMaxCode) {
        fail("the expression has " + std::to_string(code_.size()) + " bytes of code, too many to count");
    }
}

VM::Floats VM::execute(Floats inputs) {
    return run(inputs, Unmetered{});
}

VM::Floats VM::executeAtMost(std::uint64_t instructions, Floats inputs) {
    return run(inputs, Budget{instructions});
}

template <class Meter>
VM::Floats VM::run(const Floats& inputs, Meter meter) {
    Floats outputs;
    Cursor code(code_, ip_);
    for (;;) {
        meter();
        switch (static_cast<Opcode>(code.readByte())) {
        case Opcode::Constant:
            stack_.push(code.constantOf(constants_));
            break;
        case Opcode::Vector:
            makeVector(stack_);
            break;
        case Opcode::Component: {
            const unsigned char operand = code.readByte();
            stack_.push(component(stack_.popAs<ValueVector>(), operand));
            break;
        }
        case Opcode::Add:
            combineNumbers(stack_, wrapping([](auto a, auto b) { return a + b; }));
            break;
        case Opcode::Subtract:
            combineNumbers(stack_, wrapping([](auto a, auto b) { return a - b; }));
            break;
        case Opcode::Multiply:
            combineNumbers(stack_, wrapping([](auto a, auto b) { return a * b; }));
            break;
        case Opcode::Divide:
            combineNumbers(stack_, Divide{});
            break;
        case Opcode::Modulo:
            modulo(stack_);
            break;
        case Opcode::Negate:
            negate(stack_.top());
            break;
        case Opcode::Not:
            assign(stack_.top(), !as<bool>(stack_.top()));
            break;
        case Opcode::Equal:
            combineNumbers(stack_, Equal{});
            break;
        case Opcode::Greater:
            combineNumbers(stack_, [](auto a, auto b) { return a > b; });
            break;
        case Opcode::Less:
            combineNumbers(stack_, [](auto a, auto b) { return a < b; });
            break;
        case Opcode::And:
            combineBools(stack_, [](bool a, bool b) { return a && b; });
            break;
        case Opcode::Or:
            combineBools(stack_, [](bool a, bool b) { return a || b; });
            break;
        case Opcode::True:
            stack_.push(true);
            break;
        case Opcode::False:
            stack_.push(false);
            break;
        case Opcode::Pop:
            stack_.pop();
            break;
        case Opcode::Load:
            stack_.push(stack_.slot(frame_, code.readByte()));
            break;
        case Opcode::Store:
            stack_.store(frame_, code.readByte());
            break;
        case Opcode::Output: {
            const std::size_t slot = code.readByte();
            if (outputs.size() <= slot) {
                outputs.resize(slot + 1, 0.0f);
            }
            outputs[slot] = static_cast<float>(stack_.popNumber());
            break;
        }
        case Opcode::Input:
            stack_.push(static_cast<double>(code.itemOf(inputs, "the list of inputs")));
            break;
        case Opcode::GetOutput:
            stack_.push(static_cast<double>(code.itemOf(outputs, "the list of outputs")));
            break;
        case Opcode::Call: {
            const unsigned count = code.readByte();
            const unsigned short target = code.readWord();
            code.moveTo(call(count, target, code.position()));
            break;
        }
        case Opcode::Return:
            code.moveTo(returnFromCall(code.position()));
            break;
        case Opcode::Jump:
            code.jumpForward(code.readWord());
            break;
        case Opcode::JumpUnless: {
            const std::size_t offset = code.readWord();
            if (!stack_.popAs<bool>()) {
                code.jumpForward(offset);
            }
            break;
        }
        case Opcode::JumpBack:
            code.jumpBack(code.readWord());
            break;
        case Opcode::End:
            ip_ = code.position();
            return outputs;
        default:
            break; // an unknown opcode is a no-operation of one byte
        }
    }
}

// Returns where to go on.
int VM::call(unsigned count, unsigned short target, int ip) {
    if (count > stack_.size()) {
        fail("the call before code[" + std::to_string(ip) + "] takes " + std::to_string(count) +
             " arguments from a stack of " + std::to_string(stack_.size()));
    }
    const auto frame = static_cast<unsigned>(stack_.size() - count);
    if (target >= code_.size()) {
        callBuiltin(target, frame, count, ip);
        return ip;
    }
    if (calls_.size() >= kMaxCalls) {
        fail("the expression keeps more than " + std::to_string(kMaxCalls) + " calls open");
    }
    calls_.emplace_back(ip, frame_);
    frame_ = frame;
    return target;
}

void VM::callBuiltin(unsigned short id, unsigned frame, unsigned count, int ip) {
    const Builtin::Function& function = Builtin::get_function(id);
    if (count < Builtin::arity(id)) {
        fail(std::string("the built-in ") + Builtin::name(id) + " reads " + std::to_string(Builtin::arity(id)) +
             " arguments, the call before code[" + std::to_string(ip) + "] gives " + std::to_string(count));
    }
    const Value result = function(stack_.from(frame));
    stack_.shrink(frame);
    stack_.push(result);
}

// Returns where to go on.
int VM::returnFromCall(int ip) {
    if (calls_.empty()) {
        fail("the expression returns before code[" + std::to_string(ip) + "] with no call open");
    }
    const Value result = stack_.top();
    stack_.pop();
    stack_.shrink(frame_);
    stack_.push(result);
    std::tie(ip, frame_) = calls_.back();
    calls_.pop_back();
    return ip;
}

} // namespace zent
