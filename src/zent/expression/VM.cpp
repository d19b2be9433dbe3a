#include "zent/expression/VM.h"

#include "zent/expression/arithmetic.h"
#include "zent/expression/Builtin.h"
#include "zent/expression/DecodedCode.h"
#include "zent/expression/Opcode.h"
#include "zent/math/require.h"

#include <algorithm>
#include <limits>
#include <string>
#include <tuple>

namespace zent {

namespace {

// The value stack of a run. Its ends are kept here, out of memory, since nearly every instruction moves the top; the
// errors and the growing, which need the stack itself, get numbers and give new ends back.
class RunStack {
public:
    explicit RunStack(ValueStack& stack) : stack_(stack), room_(stack.room()) {}

    std::size_t size() const { return static_cast<std::size_t>(room_.top - room_.bottom); }
    /// To and from the stack that others work on.
    void leave() { stack_.resize(size()); }
    void comeBack() { room_ = stack_.room(); }

    template <class T>
    void push(const T& value) {
        if (__builtin_expect(room_.top == room_.end, 0)) {
            const T kept = value; // which may lie in the stack
            room_ = stack_.grow();
            assign(*room_.top++, kept);
            return;
        }
        assign(*room_.top++, value);
    }

    /// Requires so many values.
    void require(std::ptrdiff_t count) {
        if (__builtin_expect(room_.top < room_.bottom + count, 0)) {
            ValueStack::failEmpty(static_cast<std::size_t>(count), size());
        }
    }

    Value& top() {
        require(1);
        return room_.top[-1];
    }

    void pop() {
        require(1);
        --room_.top;
    }

    /// Gives `take` the value below the top and the top, of which the latter goes.
    template <class Take>
    [[gnu::always_inline]] void popPair(Take take) {
        require(2); // two values are missed first
        take(room_.top[-2], room_.top[-1]);
        --room_.top;
    }

    template <class T>
    T popAs() {
        const T alternative = as<T>(top());
        --room_.top;
        return alternative;
    }

    double popNumber() {
        const double number = toNumber(top());
        --room_.top;
        return number;
    }

    /// A slot of the frame that starts at index `frame`.
    Value& slot(std::size_t frame, std::size_t slot) {
        Value* const value = room_.bottom + frame + slot;
        if (__builtin_expect(value >= room_.top, 0)) {
            ValueStack::failSlot(frame, slot, size());
        }
        return *value;
    }

    /// The slot takes the top, which stays.
    void store(std::size_t frame, std::size_t slot) {
        Value& to = this->slot(frame, slot); // the slot is missed first
        assign(to, top());
    }

    Value* from(std::size_t index) { return room_.bottom + index; }
    /// Removes the values down to an index; where there are none above it, none.
    void shrink(std::size_t size) { room_.top = std::min(room_.top, room_.bottom + size); }

private:
    ValueStack& stack_;
    ValueStack::Room room_;
};

[[noreturn, gnu::cold, gnu::noinline]] void failUnreachable() {
    fail("Unreachable");
}

// a b -> operation(a, b), for the four pairs of integers and doubles.
template <class Operation>
[[gnu::always_inline]] inline void combineNumbers(RunStack& stack, Operation operation) {
    stack.popPair([operation](Value& a, const Value& b) {
        if (!combine(a, b, operation, [&a](auto result) { assign(a, result); })) {
            failUnreachable();
        }
    });
}

void negate(Value& value) {
    if (const int* integer = std::get_if<int>(&value)) {
        assign(value, static_cast<int>(0U - static_cast<unsigned>(*integer)));
    } else {
        assign(value, -as<double>(value));
    }
}

template <class Operation>
[[gnu::always_inline]] inline void combineBools(RunStack& stack, Operation operation) {
    const bool b = stack.popAs<bool>();
    const bool a = stack.popAs<bool>();
    stack.push(operation(a, b));
}

[[gnu::always_inline]] inline void makeVector(RunStack& stack) {
    const double z = stack.popNumber();
    const double y = stack.popNumber();
    const double x = stack.popNumber();
    stack.push(ValueVector{x, y, z});
}

double component(const ValueVector& vector, unsigned char operand) {
    return operand == 2 ? vector.z : operand == 1 ? vector.y : vector.x; // x for every other operand, too
}

// Counts instructions; of decoded ones several at once, which are given back where the bytes do their work.
struct Unmetered {
    void takeOne() const {}
    bool take(unsigned) const { return true; }
    void giveBack(unsigned) const {}
};

struct Budget {
    std::uint64_t instructions;
    std::uint64_t run = 0;

    void takeOne() {
        if (run++ == instructions) {
            fail("the expression runs more than " + std::to_string(instructions) + " instructions");
        }
    }
    bool take(unsigned steps) {
        if (instructions - run < steps) {
            return false;
        }
        run += steps;
        return true;
    }
    void giveBack(unsigned steps) { run -= steps; }
};

// The byte code and the next byte to read, kept out of memory as the stack's ends are: what an instruction writes might
// change whatever lies there, as far as the compiler can tell.
class Cursor {
public:
    Cursor(const std::vector<unsigned char>& code, int ip)
        : code_(code), bytes_(code.data()), size_(code.size()), ip_(static_cast<std::size_t>(ip)) {}

    int position() const { return static_cast<int>(ip_); }
    void moveTo(int position) { ip_ = static_cast<std::size_t>(position); }
    void jumpForward(std::size_t offset) { ip_ += offset; }
    void jumpBack(std::size_t offset) {
        if (offset > ip_) {
            failJumpBack(offset, ip_);
        }
        ip_ -= offset;
    }

    unsigned char readByte() {
        if (__builtin_expect(ip_ >= size_, 0)) {
            failEnd(code_, ip_);
        }
        return bytes_[ip_++];
    }

    unsigned short readWord() {
        const unsigned high = readByte();
        return static_cast<unsigned short>(high << 8U | readByte());
    }

    // The item whose index is the operand byte.
    template <class List>
    const typename List::value_type& itemOf(const List& list, const char* name) {
        const std::size_t index = readByte();
        if (__builtin_expect(index >= list.size(), 0)) {
            failItem(ip_ - 1, index, list.size(), name);
        }
        return list[index];
    }

    const Value& constantOf(const std::vector<Value>& constants) {
        const Value& constant = itemOf(constants, "the list of constants");
        if (const auto* unknown = std::get_if<UnknownValue>(&constant)) {
            failConstant(ip_ - 1, *unknown);
        }
        return constant;
    }

private:
    [[noreturn, gnu::cold, gnu::noinline]] static void failEnd(const std::vector<unsigned char>& code, std::size_t ip) {
        static_cast<void>(code.at(ip));
        __builtin_unreachable();
    }
    [[noreturn, gnu::cold, gnu::noinline]] static void failJumpBack(std::size_t offset, std::size_t ip) {
        fail("the jump back by " + std::to_string(offset) + " before code[" + std::to_string(ip) +
             "] leads out of the expression");
    }
    [[noreturn, gnu::cold, gnu::noinline]] static void failItem(std::size_t ip, std::size_t index, std::size_t size,
                                                                const char* name) {
        requireIndex("code", ip, index, size, name);
        __builtin_unreachable();
    }
    [[noreturn, gnu::cold, gnu::noinline]] static void failConstant(std::size_t ip, UnknownValue unknown) {
        fail("the constant of code[" + std::to_string(ip) + "] has the index " + std::to_string(unknown.index) +
             ", the last one is 3");
    }

    const std::vector<unsigned char>& code_;
    const unsigned char* bytes_;
    std::size_t size_;
    std::size_t ip_;
};

[[noreturn, gnu::cold, gnu::noinline]] void failArguments(unsigned count, std::size_t size, int ip) {
    fail("the call before code[" + std::to_string(ip) + "] takes " + std::to_string(count) +
         " arguments from a stack of " + std::to_string(size));
}

[[noreturn, gnu::cold, gnu::noinline]] void failNative(unsigned short id, unsigned count, int ip) {
    fail(std::string("the built-in ") + Builtin::name(id) + " reads " + std::to_string(Builtin::arity(id)) +
         " arguments, the call before code[" + std::to_string(ip) + "] gives " + std::to_string(count));
}

[[noreturn, gnu::cold, gnu::noinline]] void failReturn(int ip) {
    fail("the expression returns before code[" + std::to_string(ip) + "] with no call open");
}

// Behind a position, a jump forward stays within an int.
constexpr std::size_t kMaxCode = std::numeric_limits<int>::max() - 0x20000;

} // namespace

VM::VM(std::vector<unsigned char>&& code, std::vector<Value>&& constants, unsigned warmUp)
    : code_(std::move(code)), constants_(std::move(constants)), warmUp_(warmUp) {
    if (code_.size() > kMaxCode) {
        fail("the expression has " + std::to_string(code_.size()) + " bytes of code, too many to count");
    }
}

VM::~VM() = default;

VM::Floats VM::execute(Floats inputs) {
    return run(inputs, Unmetered{});
}

VM::Floats VM::executeAgain(const Floats& inputs) {
    ip_ = 0;
    stack_.resize(0);
    frame_ = 0;
    calls_.clear();
    repeats_ = 0;
    if (decoded_ && !decoded_->takeInputs(inputs)) {
        decoded_.reset();
    }
    return run(inputs, Unmetered{});
}

VM::Floats VM::executeAtMost(std::uint64_t instructions, Floats inputs) {
    return run(inputs, Budget{instructions});
}

template <class Meter>
VM::Floats VM::run(const Floats& inputs, Meter meter) {
    Floats outputs;
    Cursor code(code_, ip_);
    RunStack stack(stack_);
    const auto goOnDecoded = [&] {
        stack.leave();
        code.moveTo(runDecoded(code.position(), inputs, outputs, meter));
        stack.comeBack();
    };
    for (;;) {
        meter.takeOne();
        switch (static_cast<Opcode>(code.readByte())) {
        case Opcode::Constant:
            stack.push(code.constantOf(constants_));
            break;
        case Opcode::Vector:
            makeVector(stack);
            break;
        case Opcode::Component: {
            const unsigned char operand = code.readByte();
            stack.push(component(stack.popAs<ValueVector>(), operand));
            break;
        }
        case Opcode::Add:
            combineNumbers(stack, Add{});
            break;
        case Opcode::Subtract:
            combineNumbers(stack, Subtract{});
            break;
        case Opcode::Multiply:
            combineNumbers(stack, Multiply{});
            break;
        case Opcode::Divide:
            combineNumbers(stack, Divide{});
            break;
        case Opcode::Modulo:
            stack.popPair(takeModulo);
            break;
        case Opcode::Negate:
            negate(stack.top());
            break;
        case Opcode::Not:
            assign(stack.top(), !as<bool>(stack.top()));
            break;
        case Opcode::Equal:
            combineNumbers(stack, Equal{});
            break;
        case Opcode::Greater:
            combineNumbers(stack, Greater{});
            break;
        case Opcode::Less:
            combineNumbers(stack, Less{});
            break;
        case Opcode::And:
            combineBools(stack, [](bool a, bool b) { return a && b; });
            break;
        case Opcode::Or:
            combineBools(stack, [](bool a, bool b) { return a || b; });
            break;
        case Opcode::True:
            stack.push(true);
            break;
        case Opcode::False:
            stack.push(false);
            break;
        case Opcode::Pop:
            stack.pop();
            break;
        case Opcode::Load:
            stack.push(stack.slot(frame_, code.readByte()));
            break;
        case Opcode::Store:
            stack.store(frame_, code.readByte());
            break;
        case Opcode::Output: {
            const std::size_t slot = code.readByte();
            if (outputs.size() <= slot) {
                outputs.resize(slot + 1, 0.0f);
            }
            outputs[slot] = static_cast<float>(stack.popNumber());
            break;
        }
        case Opcode::Input:
            stack.push(static_cast<double>(code.itemOf(inputs, "the list of inputs")));
            break;
        case Opcode::GetOutput:
            stack.push(static_cast<double>(code.itemOf(outputs, "the list of outputs")));
            break;
        case Opcode::Call: {
            const unsigned count = code.readByte();
            const unsigned short target = code.readWord();
            if (__builtin_expect(count > stack.size(), 0)) {
                failArguments(count, stack.size(), code.position());
            }
            const std::size_t frame = stack.size() - count;
            if (target >= code_.size()) {
                const Builtin::Native native = Builtin::nativeOf(target, count);
                if (__builtin_expect(native == nullptr, 0)) {
                    failNative(target, count, code.position());
                }
                Value* const args = stack.from(frame); // at least one
                native(args, *args);
                stack.shrink(frame + 1);
                break;
            }
            openCall(code.position(), static_cast<unsigned>(frame));
            code.moveTo(target);
            if (isWarm()) {
                goOnDecoded();
            }
            break;
        }
        case Opcode::Return: {
            if (__builtin_expect(calls_.empty(), 0)) {
                failReturn(code.position());
            }
            // Where the function took its caller's values, the result stays where it is.
            Value& result = stack.top();
            stack.shrink(frame_ + std::size_t{1});
            assign(stack.top(), result);
            code.moveTo(calls_.back().first);
            frame_ = calls_.back().second;
            calls_.pop_back();
            break;
        }
        case Opcode::Jump:
            code.jumpForward(code.readWord());
            break;
        case Opcode::JumpUnless: {
            const std::size_t offset = code.readWord();
            if (!stack.popAs<bool>()) {
                code.jumpForward(offset);
            }
            break;
        }
        case Opcode::JumpBack:
            code.jumpBack(code.readWord());
            if (isWarm()) {
                goOnDecoded();
            }
            break;
        case Opcode::End:
            ip_ = code.position();
            return outputs;
        default:
            break; // an unknown opcode is a no-operation of one byte
        }
    }
}

void VM::openCall(int ip, unsigned frame) {
    if (calls_.size() >= kMaxCalls) {
        fail("the expression keeps more than " + std::to_string(kMaxCalls) + " calls open");
    }
    calls_.emplace_back(ip, frame_);
    frame_ = frame;
}

bool VM::isWarm() {
    if (warmUp_ == kNever || code_.size() > DecodedCode::kMaxSize || ++repeats_ < warmUp_) {
        return false;
    }
    repeats_ = 0;
    return true;
}

namespace {

// The registers of the decoded machine.
struct Registers {
    Value* top; ///< behind the topmost value
    Value* frame;
    const Value* pool;
    const Instruction* at;

    const Value& operand(std::int16_t index) const { return valueOf(index, frame, pool); }
};

enum class Operands { OnStack, SecondGiven, BothGiven };

// The two values of a binary instruction, and where its result goes if that is the stack.
template <Operands kOperands>
[[gnu::always_inline]] inline const Value& leftOf(const Registers& r) {
    return kOperands == Operands::BothGiven     ? r.operand(r.at->a)
           : kOperands == Operands::SecondGiven ? r.top[-1]
                                                : r.top[-2];
}

template <Operands kOperands>
[[gnu::always_inline]] inline const Value& rightOf(const Registers& r) {
    return kOperands == Operands::OnStack ? r.top[-1] : r.operand(r.at->b);
}

template <Operands kOperands>
constexpr int kTaken = kOperands == Operands::BothGiven     ? 0
                       : kOperands == Operands::SecondGiven ? 1
                                                            : 2;

template <Operands kOperands, class Operation>
[[gnu::always_inline]] inline bool pushResult(Registers& r, Operation operation) {
    Value& to = r.top[-kTaken<kOperands>];
    if (!combine(leftOf<kOperands>(r), rightOf<kOperands>(r), operation, [&to](auto result) { assign(to, result); })) {
        return false;
    }
    r.top += 1 - kTaken<kOperands>;
    r.at = r.at->next;
    return true;
}

template <Operands kOperands, class Operation>
[[gnu::always_inline]] inline bool storeResult(Registers& r, Operation operation) {
    Value& to = r.frame[r.at->to];
    if (!combine(leftOf<kOperands>(r), rightOf<kOperands>(r), operation, [&to](auto result) { assign(to, result); })) {
        return false;
    }
    r.top -= kTaken<kOperands>;
    r.at = r.at->next;
    return true;
}

template <Operands kOperands, class Operation>
[[gnu::always_inline]] inline bool jumpUnlessResult(Registers& r, Operation operation) {
    bool holds = false;
    if (!combine(leftOf<kOperands>(r), rightOf<kOperands>(r), operation, [&holds](bool result) { holds = result; })) {
        return false;
    }
    r.top -= kTaken<kOperands>;
    r.at = holds ? r.at->next : r.at->target;
    return true;
}

} // namespace

// The forms of a family, in the order of Action. NOLINTBEGIN(bugprone-macro-parentheses): names, not expressions
#define ZENT_CASE(FAMILY, FORM, RUN, OPERANDS)                                                                         \
    case Action::FAMILY + (FORM):                                                                                      \
        if (!RUN<Operands::OPERANDS>(r, FAMILY{})) {                                                                   \
            return leave();                                                                                            \
        }                                                                                                              \
        break;
#define ZENT_FAMILY(FAMILY, RUN_LAST)                                                                                  \
    ZENT_CASE(FAMILY, 0, pushResult, OnStack)                                                                          \
    ZENT_CASE(FAMILY, 1, pushResult, SecondGiven)                                                                      \
    ZENT_CASE(FAMILY, 2, pushResult, BothGiven)                                                                        \
    ZENT_CASE(FAMILY, 3, RUN_LAST, OnStack)                                                                            \
    ZENT_CASE(FAMILY, 4, RUN_LAST, SecondGiven)                                                                        \
    ZENT_CASE(FAMILY, 5, RUN_LAST, BothGiven)
// NOLINTEND(bugprone-macro-parentheses)

// Runs decoded instructions from a position on. Returns the position of the one that is left to the bytes, with nothing
// of it done.
template <class Meter>
int VM::runDecoded(int ip, const Floats& inputs, Floats& outputs, Meter& meter) {
    if (static_cast<std::size_t>(ip) > code_.size()) {
        return ip;
    }
    if (!decoded_) {
        decoded_ = std::make_unique<DecodedCode>(code_, constants_, inputs);
    }
    const ValueStack::Room room = stack_.room();
    Value* const bottom = room.bottom;
    // One instruction pushes two values at most.
    const Value* const last = room.end - 2;
    Registers r{room.top, bottom + frame_, decoded_->pool(), decoded_->at(static_cast<std::size_t>(ip))};
    const auto stop = [&] {
        stack_.resize(static_cast<std::size_t>(r.top - bottom));
        frame_ = static_cast<unsigned>(r.frame - bottom);
        return static_cast<int>(decoded_->positionOf(r.at));
    };
    const auto leave = [&] {
        meter.giveBack(r.at->steps);
        return stop();
    };
    for (;;) {
        const Instruction& now = *r.at;
        if (r.top - r.frame < now.needed || r.top > last || !meter.take(now.steps)) {
            return stop();
        }
        switch (static_cast<unsigned>(now.action)) {
            ZENT_FAMILY(Add, storeResult)
            ZENT_FAMILY(Subtract, storeResult)
            ZENT_FAMILY(Multiply, storeResult)
            ZENT_FAMILY(Divide, storeResult)
            ZENT_FAMILY(Equal, jumpUnlessResult)
            ZENT_FAMILY(Greater, jumpUnlessResult)
            ZENT_FAMILY(Less, jumpUnlessResult)
        case Action::Fused:
            if (Value* const top = now.fused(r.top, r.frame, r.pool, now)) {
                r.top = top;
                r.at = now.next;
                break;
            }
            meter.giveBack(now.steps);
            decoded_->decodeApart(decoded_->positionOf(r.at));
            break;
        case Action::Undecoded:
            decoded_->decode(decoded_->positionOf(r.at));
            break;
        case Action::Leave:
            return leave();
        case Action::Push:
            assign(*r.top++, r.operand(now.a));
            r.at = now.next;
            break;
        case Action::PushTwo:
            assign(r.top[0], r.operand(now.a));
            assign(r.top[1], r.operand(now.b));
            r.top += 2;
            r.at = now.next;
            break;
        case Action::Move:
            assign(r.frame[now.to], r.operand(now.a));
            r.at = now.next;
            break;
        case Action::Pop:
            --r.top;
            r.at = now.next;
            break;
        case Action::Store:
            assign(r.frame[now.a], r.top[-1]);
            r.at = now.next;
            break;
        case Action::StorePop:
            assign(r.frame[now.a], *--r.top);
            r.at = now.next;
            break;
        case Action::Vector:
            r.top -= 2;
            assign(r.top[-1], ValueVector{toNumber(r.top[-1]), toNumber(r.top[0]), toNumber(r.top[1])});
            r.at = now.next;
            break;
        case Action::Component:
            if (const auto* vector = std::get_if<ValueVector>(r.top - 1)) {
                assign(r.top[-1], component(*vector, now.a));
                r.at = now.next;
                break;
            }
            return leave();
        case Action::ComponentOf:
            if (const auto* vector = std::get_if<ValueVector>(&r.operand(now.a))) {
                assign(*r.top++, component(*vector, now.b));
                r.at = now.next;
                break;
            }
            return leave();
        case Action::Modulo:
            takeModulo(r.top[-2], r.top[-1]);
            --r.top;
            r.at = now.next;
            break;
        case Action::Negate:
            negate(r.top[-1]);
            r.at = now.next;
            break;
        case Action::Not:
            assign(r.top[-1], !as<bool>(r.top[-1]));
            r.at = now.next;
            break;
        case Action::And:
        case Action::Or: {
            const bool b = as<bool>(r.top[-1]);
            const bool a = as<bool>(r.top[-2]);
            --r.top;
            assign(r.top[-1], now.action == Action::And ? a && b : a || b);
            r.at = now.next;
            break;
        }
        case Action::Output:
        case Action::OutputOf: {
            const bool isGiven = now.action == Action::OutputOf;
            const auto slot = static_cast<std::size_t>(isGiven ? now.b : now.a);
            if (slot >= outputs.size()) {
                return leave(); // the bytes make room
            }
            outputs[slot] = static_cast<float>(toNumber(isGiven ? r.operand(now.a) : *--r.top));
            r.at = now.next;
            break;
        }
        case Action::GetOutput:
            if (static_cast<std::size_t>(now.a) >= outputs.size()) {
                return leave();
            }
            assign(*r.top++, static_cast<double>(outputs[static_cast<std::size_t>(now.a)]));
            r.at = now.next;
            break;
        case Action::Call:
            if (calls_.size() >= kMaxCalls) {
                return leave();
            }
            calls_.emplace_back(static_cast<int>(decoded_->positionOf(now.next)),
                                static_cast<unsigned>(r.frame - bottom));
            r.frame = r.top - now.a;
            r.at = now.target;
            break;
        case Action::Native: {
            Value* args = r.top - now.a;
            now.native(args, *args);
            r.top = args + 1;
            r.at = now.next;
            break;
        }
        case Action::Return: {
            if (calls_.empty() || r.top == bottom) {
                return leave();
            }
            Value* to = std::min(r.top - 1, r.frame);
            assign(*to, r.top[-1]);
            r.top = to + 1;
            r.frame = bottom + calls_.back().second;
            r.at = decoded_->at(static_cast<std::size_t>(calls_.back().first));
            calls_.pop_back();
            break;
        }
        case Action::Jump:
            r.at = now.next;
            break;
        case Action::JumpUnless:
            r.at = as<bool>(*--r.top) ? now.next : now.target;
            break;
        default:
            __builtin_unreachable();
        }
    }
}

} // namespace zent
