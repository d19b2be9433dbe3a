#pragma once

#include "zent/geometry/shapes.h"
#include "zent/proxies/Evaluation.h"
#include "zent/proxies/MethodInfo.h"
#include "zent/proxies/PointWalk.h"
#include "zent/proxies/Proxy.h"

#include <algorithm>

namespace zent {

/// The base of the deformers' adapters: a walk over the points of Maya's deformed shape. For one point at a time it
/// reports Maya's position, and has the node function deform a one-point copy of the undeformed position; both in world
/// space, each by its own shape's matrix. T is Mesh, Curve, Surface or Lattice.
///
/// A derived class's `init` calls this one, reads its own arguments, and cuts all that belongs to the whole shape into
/// records by point, so that the cost of a point is independent of the shape's size. What depends on arguments that may
/// be overwritten is made in `prepare`.
template <class T>
class ProxyDeformer : public Proxy, public PointSource, public Bindable {
public:
    /// Both are the point at `index()`, in JSON.
    json mayaResult(const std::vector<Port>& ports) const override;
    json zentResult(const Arguments& args) const override;
    bool isDeformer() const override { return true; }
    /// Reads port 0, the plug of the deformed shape, and starts a walk.
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void next() override { ++cursor; }
    /// Throws std::runtime_error "Empty Maya Shape" for a shape without points.
    bool isDone() const override;
    int index() const override { return static_cast<int>(cursor); }
    /// Deforms a shape of one point, the one that stands at `index` in the whole shape.
    virtual void deform(T& shape, unsigned int index) const = 0;

    std::unique_ptr<PointWalk> walk() const override;

    /// All points of the undeformed shape, by the arguments as they stand; Maya's shape is not read.
    std::unique_ptr<Evaluation> bind(const Arguments& args) override;
    /// Where an argument stands that may be overwritten; kind none for any other.
    virtual Slot slot(unsigned int /*index*/, const EntryPlace& /*entry*/) { return {}; }
    /// Makes what `deform` needs of the arguments that `slot` tells.
    virtual void prepare() {}
    /// Whether the deformed shape has no transform.
    virtual bool dropsMatrix() const { return false; }
    /// Deforms the points from one to another of a shape that is the undeformed one; `onePoint` is a shape of one point
    /// that stands as it does.
    virtual void deformPoints(T& shape, const T& onePoint, unsigned int from, unsigned int to) const;
    /// All points that `deform` gives, one after the other, where that is cheaper at once; else none.
    virtual std::vector<vec3> deformAll() const { return {}; }
    const T& undeformed() const { return input; }

protected:
    virtual unsigned int inputArgument() const { return 0; }
    /// Reads the undeformed shape. It must hold every point that the walk visits; its knots are not read.
    void readInput(const Arguments& args, unsigned int index);
    /// Points that the walk visits.
    unsigned int count() const { return pointCount(output); }
    /// Points of the input that have a record and are visited. The input's counts may speak for any number of points
    /// that nothing reads.
    unsigned int recordCount() const { return std::min(pointCount(input), count()); }
    /// Starts a closure with the default one under the node's own name, for the inputs "envelope" and the point at
    /// `index()`, which all of them begin with.
    json deformerClosure(const char* node, float envelope, const Arguments& args, const std::vector<Port>& ports) const;
    /// What the method reads: one shape, and these arguments.
    MethodInfo deformerInfo(std::vector<ValueInfo> arguments) const;

    T input;                 ///< the undeformed shape
    T output;                ///< Maya's deformed shape
    unsigned int cursor = 0; ///< the present point
};

extern template class ProxyDeformer<Mesh>;
extern template class ProxyDeformer<Curve>;
extern template class ProxyDeformer<Surface>;
extern template class ProxyDeformer<Lattice>;

} // namespace zent
