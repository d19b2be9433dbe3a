#include "zent/values/Port.h"

#include "zent/values/Log.h"

#include <fmt/format.h>

#include <stdexcept>

namespace zent {

namespace {

/// Ports are a list by attribute number; a number beyond this one could only ask for absurd memory.
constexpr unsigned int kMaxAttribute = 0xFFFF;

} // namespace

const Element& Port::castSingle() const {
    if (elements_.size() == 1) {
        return elements_.front();
    }
    for (const Element& element : elements_) { // deliberate: a literal among several ends this with "not a string"
        Log::println("Element: " + element.getString());
    }
    throw std::runtime_error("not single");
}

void Port::requireSize(std::size_t size) const {
    if (elements_.size() != size) {
        throw std::runtime_error(fmt::format("size should be {} not {}", size, elements_.size()));
    }
}

void Port::requireAtMost(std::size_t size) const {
    if (elements_.size() > size) {
        failAt(elements_.front().place(), fmt::format("size should be at most {} not {}", size, elements_.size()));
    }
}

Port& portAt(std::vector<Port>& ports, unsigned int index) {
    if (index > kMaxAttribute) {
        throw std::runtime_error(fmt::format("attribute {} is beyond the limit of {}", index, kMaxAttribute));
    }
    if (index >= ports.size()) {
        ports.resize(std::size_t{index} + 1);
    }
    return ports[index];
}

void Arguments::add(unsigned int index, Element&& element) {
    portAt(ports_, index).add(std::move(element));
}

const Port& Arguments::get(unsigned int index) const {
    static const Port kEmpty;
    return index < ports_.size() ? ports_[index] : kEmpty;
}

} // namespace zent
