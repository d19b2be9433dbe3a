#include "Function.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <exception>
#include <new>
#include <sstream>
#include <system_error>
#include <thread>

namespace zent::python {

namespace {

constexpr std::size_t kMostParameters = 24;
constexpr const char* kCapsule = "zent.Function";

std::string numberText(float number, const std::string& annotation) {
    if (annotation == "Truth") {
        return number != 0.0f ? "True" : "False";
    }
    std::ostringstream text;
    text << number;
    return annotation == "Floats" && text.str().find('.') == std::string::npos ? text.str() + ".0" : text.str();
}

/// A default as Python's signature has it; None is told in the docstring.
std::string defaultText(const Parameter& parameter) {
    const std::string& words = parameter.type;
    if (parameter.kind != Default::number || words.rfind("(n", 0) == 0 || words.rfind("(1", 0) == 0) {
        return "None";
    }
    const std::string one = numberText(parameter.number, parameter.annotation);
    if (words[0] != '(') {
        return one;
    }
    std::string text = "(" + one;
    for (int i = 1; i < words[1] - '0'; ++i) {
        text += ", " + one;
    }
    return text + ")";
}

std::string meaningOfNone(const Parameter& parameter) {
    const bool isList = parameter.type.rfind("(n", 0) == 0 || parameter.type.rfind("(1", 0) == 0;
    switch (parameter.kind) {
    case Default::identity:
        return isList ? "; identities if None" : "; the identity if None";
    case Default::empty:
        return "; none if None";
    case Default::number:
        return isList ? "; " + numberText(parameter.number, parameter.annotation) + " for each if None" : "";
    default:
        return "";
    }
}

/// NAME[:rad][=NUMBER|=I|=[]]
Parameter parameterOf(const std::string& word, const TypeText& type) {
    Parameter parameter;
    const std::size_t equals = word.find('=');
    const std::string named = word.substr(0, equals);
    const std::size_t colon = named.find(':');
    parameter.name = named.substr(0, colon);
    parameter.unit = colon == std::string::npos ? "" : named.substr(colon + 1);
    if (equals != std::string::npos) {
        const std::string given = word.substr(equals + 1);
        parameter.kind = given == "I" ? Default::identity : given == "[]" ? Default::empty : Default::number;
        parameter.number = parameter.kind == Default::number ? std::stof(given) : 0.0f;
    }
    parameter.type = type.words;
    parameter.annotation = type.annotation;
    parameter.defaultText = defaultText(parameter);
    parameter.key = PyUnicode_InternFromString(parameter.name.c_str());
    return parameter;
}

std::string describe(Function& function, const TypeText& result, const char* summary) {
    std::string signature;
    std::string stub;
    std::string list;
    for (const unsigned int place : function.order) {
        const Parameter& parameter = function.parameters[place];
        const bool isOptional = parameter.kind != Default::none;
        signature += (signature.empty() ? "" : ", ") + parameter.name + (isOptional ? "=" + parameter.defaultText : "");
        stub += (stub.empty() ? "" : ", ") + parameter.name + ": " +
                (isOptional ? "Optional[" + parameter.annotation + "] = ..." : parameter.annotation);
        list += "    " + parameter.name + ": " + parameter.type + (parameter.unit == "rad" ? ", radians" : "") +
                meaningOfNone(parameter) + "\n";
    }
    function.stub = "def " + function.name + "(" + stub + ") -> " +
                    (result.annotation == "Floats"  ? "Any"
                     : result.annotation == "Truth" ? "Any"
                                                    : "Any") +
                    ": ...";
    return function.name + "(" + signature + ")\n--\n\n" + summary + "\n\n" + list + "\nReturns " + result.words +
           ". Arguments of one more leading dimension are rows: each row is evaluated, and what has\nno such dimension "
           "serves all of them.";
}

/// The arguments by the library's order. Fails with a TypeError.
void sortArguments(const Function& function, PyObject* const* given, std::size_t positional, PyObject* names,
                   PyObject** values) {
    const std::string name = function.name + "()";
    if (positional > function.order.size()) {
        throw py::type_error(name + " takes at most " + std::to_string(function.order.size()) + " arguments, " +
                             std::to_string(positional) + " were given");
    }
    for (std::size_t i = 0; i < positional; ++i) {
        values[function.order[i]] = given[i];
    }
    const std::size_t named = names == nullptr ? 0 : static_cast<std::size_t>(PyTuple_GET_SIZE(names));
    for (std::size_t i = 0; i < named; ++i) {
        PyObject* key = PyTuple_GET_ITEM(names, static_cast<Py_ssize_t>(i));
        std::size_t place = 0;
        while (place < function.parameters.size() && function.parameters[place].key != key) {
            ++place;
        }
        if (place == function.parameters.size()) { // not interned, or unknown
            place = 0;
            while (place < function.parameters.size() && PyUnicode_Compare(function.parameters[place].key, key) != 0) {
                ++place;
            }
        }
        const std::string word = "'" + py::str(key).cast<std::string>() + "'";
        if (place == function.parameters.size()) {
            throw py::type_error(name + " got an unexpected keyword argument " + word);
        }
        if (values[place] != nullptr) {
            throw py::type_error(name + " got multiple values for argument " + word);
        }
        values[place] = given[positional + i];
    }
    for (const unsigned int place : function.order) {
        if (function.parameters[place].kind == Default::none) {
            if (values[place] == nullptr) {
                throw py::type_error(name + " missing required argument '" + function.parameters[place].name + "'");
            }
        } else if (values[place] == Py_None) {
            values[place] = nullptr;
        }
    }
}

PyObject* callFunction(PyObject* self, PyObject* const* given, Py_ssize_t positional, PyObject* names) {
    const auto& function = *static_cast<const Function*>(PyCapsule_GetPointer(self, kCapsule));
    PyObject* values[kMostParameters] = {};
    Call call(function.name.c_str(), function.parameters, values);
    try {
        sortArguments(function, given, static_cast<std::size_t>(positional), names, values);
        return function.invoke(function.function, call).release().ptr();
    } catch (py::error_already_set& error) {
        error.restore();
    } catch (const py::builtin_exception& error) {
        error.set_error();
    } catch (const std::bad_alloc&) {
        PyErr_NoMemory();
    } catch (const std::exception& error) {
        const std::string text =
            call.isBatch() ? "row " + std::to_string(call.row) + ": " + error.what() : std::string(error.what());
        PyErr_SetString(errorType(), text.c_str());
    }
    return nullptr;
}

} // namespace

// ---- rows in several threads ----------------------------------------------------------------------------------------

namespace {

constexpr double kEnoughToJudge = 1e-4; // seconds; less tells nothing of what a row takes
constexpr double kWorthThreads = 5e-4;  // seconds of work that is left; a thread takes some 2e-5 to start

std::atomic<unsigned int> mostThreads{0};

unsigned int threadCount() {
    const unsigned int most = mostThreads;
    return most != 0 ? most : std::max(1U, std::thread::hardware_concurrency());
}

/// A part of the rows, and what became of it.
struct Share {
    std::size_t row;
    std::size_t last;
    std::exception_ptr problem;
    bool isUneven = false;

    void evaluate(const Rows& rows) {
        try {
            rows(last, row);
        } catch (const UnevenRows&) {
            isUneven = true;
        } catch (...) {
            problem = std::current_exception();
        }
    }
};

void evaluateInThreads(Call& call, const RowWork& work, std::size_t first, std::size_t threads) {
    std::vector<Share> shares;
    const std::size_t left = call.rows() - first;
    for (std::size_t i = 0; i < threads; ++i) {
        shares.push_back({first + left * i / threads, first + left * (i + 1) / threads, nullptr});
    }
    std::vector<std::thread> others;
    others.reserve(threads);
    std::size_t begun = 1;
    try {
        for (; begun < threads; ++begun) {
            others.emplace_back([&work, share = &shares[begun]] { share->evaluate(work.beside); });
        }
    } catch (const std::system_error&) { // there are no more threads
    }
    shares[0].evaluate(work.here);
    for (; begun < threads; ++begun) {
        shares[begun].evaluate(work.here);
    }
    for (std::thread& other : others) {
        other.join();
    }
    if (std::any_of(shares.begin(), shares.end(), [](const Share& share) { return share.isUneven; })) {
        work.restart();
        call.row = 0;
        work.here(call.rows(), call.row);
        return;
    }
    for (const Share& share : shares) { // in the order of the rows
        if (share.problem) {
            call.row = share.row;
            std::rethrow_exception(share.problem);
        }
    }
}

} // namespace

void setThreads(unsigned int count) {
    constexpr unsigned int kMost = 256;
    mostThreads = std::min(count, kMost);
}

void evaluateRows(Call& call, const RowWork& work) {
    const std::size_t rows = call.rows();
    const auto start = std::chrono::steady_clock::now();
    for (std::size_t step = 1; call.row < rows; step *= 2) {
        work.here(std::min(call.row + step, rows), call.row);
        const std::chrono::duration<double> spent = std::chrono::steady_clock::now() - start;
        const std::size_t left = rows - call.row;
        const double expected = spent.count() / static_cast<double>(call.row) * static_cast<double>(left);
        if (left > 1 && spent.count() > kEnoughToJudge && expected > kWorthThreads) {
            const std::size_t threads = std::min<std::size_t>(threadCount(), left);
            if (threads > 1 && work.share()) {
                evaluateInThreads(call, work, call.row, threads);
                return;
            }
        }
    }
}

TypeText textOf(const Layout& layout) {
    const char* word = layout.number == Number::single ? "float" : layout.number == Number::truth ? "bool" : "int";
    const char* annotation = layout.number == Number::single  ? "Floats"
                             : layout.number == Number::truth ? "Truth"
                                                              : "Ints";
    std::string shape = layout.isList ? (layout.least == layout.most ? std::to_string(layout.least) : "n") : "";
    for (std::size_t i = 0; i < layout.rank; ++i) {
        shape += (shape.empty() ? "" : ", ") + std::to_string(layout.size[i]);
    }
    if (shape.empty()) {
        return {word, annotation};
    }
    const bool isOne = shape.find(',') == std::string::npos;
    std::string words = "(" + shape + (isOne ? ",) " : ") ") + word + "s";
    if (layout.isList && layout.least != layout.most && layout.most != SIZE_MAX) {
        words += ", n at most " + std::to_string(layout.most);
    }
    return {words, annotation};
}

PyObject* errorType() {
    static PyObject* const type = PyErr_NewExceptionWithDoc(
        "zent.Error", "A value, a record or a file that cannot be evaluated or read; the text tells why.",
        PyExc_RuntimeError, nullptr);
    return type;
}

void Functions::add(const char* name, AnyFunction anyFunction, Invoke invoke, const std::vector<TypeText>& types,
                    const TypeText& result, const char* parameters, const char* summary) {
    auto* function = new Function; // for ever, as its definition is
    function->name = name;
    function->function = anyFunction;
    function->invoke = invoke;
    std::istringstream words(parameters);
    std::string word;
    while (words >> word) {
        if (function->parameters.size() < types.size()) {
            function->parameters.push_back(parameterOf(word, types[function->parameters.size()]));
        } else {
            word.clear();
            break;
        }
    }
    if (function->parameters.size() != types.size() || word.empty() || types.size() > kMostParameters) {
        throw std::logic_error(std::string(name) + ": its names are not as many as its parameters");
    }
    for (const bool isOptional : {false, true}) {
        for (unsigned int i = 0; i < function->parameters.size(); ++i) {
            if ((function->parameters[i].kind != Default::none) == isOptional) {
                function->order.push_back(i);
            }
        }
    }
    function->text = describe(*function, result, summary);
    auto* definition =
        new PyMethodDef{function->name.c_str(), reinterpret_cast<PyCFunction>(reinterpret_cast<void*>(&callFunction)),
                        METH_FASTCALL | METH_KEYWORDS, function->text.c_str()};
    const py::capsule self(function, kCapsule);
    module_.attr(name) =
        py::reinterpret_steal<py::object>(PyCFunction_NewEx(definition, self.ptr(), module_.attr("__name__").ptr()));
    py::list names;
    for (const Parameter& parameter : function->parameters) {
        names.append(parameter.name);
    }
    py::dict(module_.attr("ARGUMENTS"))[name] = py::tuple(names);
    py::dict(module_.attr("STUBS"))[name] = function->stub;
}

} // namespace zent::python
