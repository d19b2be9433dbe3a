#include "zent/values/Port.h"

#include "zent/values/Log.h"

#include <fmt/format.h>

#include <stdexcept>

namespace zent {

namespace {

/// Ports are a list by attribute number; one beyond this, which no method reads, would only ask for absurd memory.
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

void addTo(std::vector<Port>& ports, unsigned int index, Element&& element) {
    if (index > kMaxAttribute) {
        return;
    }
    if (index >= ports.size()) {
        ports.resize(std::size_t{index} + 1);
    }
    ports[index].add(std::move(element));
}

void Arguments::add(unsigned int index, Element&& element) {
    addTo(ports_, index, std::move(element));
}

const Port& Arguments::get(unsigned int index) const {
    static const Port kEmpty;
    return index < ports_.size() ? ports_[index] : kEmpty;
}

} // namespace zent
