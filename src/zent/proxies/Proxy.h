#pragma once

#include "zent/math/types.h"
#include "zent/values/json.h"

#include <string>
#include <vector>

namespace zent {

class Arguments;
class Port;

/// The adapter between a manifest record and one node function: it reads Maya's outputs from the record's ports,
/// computes the same outputs with the node function from its arguments, and writes both in one JSON form, so that the
/// two can be compared.
///
/// A result is an array of objects, one for each output of the node: "value", "type" and, on Maya's side, "name".
class Proxy {
public:
    Proxy() = default;
    Proxy(const Proxy&) = delete;
    Proxy& operator=(const Proxy&) = delete;

    virtual json mayaResult(const std::vector<Port>& ports) const = 0;
    virtual json zentResult(const Arguments& args) const = 0;
    /// What the log prints of a record that does not match.
    virtual json closure(const Arguments& args, const std::vector<Port>& ports) const;
    /// The method name that a manifest uses.
    virtual std::string name() const = 0;
    /// A deformer's record is compared point by point: `init` starts a walk, `next` moves it, `isDone` ends it.
    virtual bool isDeformer() const { return false; }
    virtual void init(const Arguments& args, const std::vector<Port>& ports);
    virtual void next() {}
    virtual bool isDone() const { return true; }
    virtual int index() const { return -1; }
    virtual ~Proxy() = default; // after the operations, so that they keep their slots

    /// A rotation (radians) as one output object: degrees, type "Euler".
    json eulerResult(vec3 radians) const;
    json eulerResult(std::string name, vec3 radians) const;
};

} // namespace zent
