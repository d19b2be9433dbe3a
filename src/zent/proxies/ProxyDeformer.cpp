#include "zent/proxies/ProxyDeformer.h"

#include "zent/math/lanes.h"
#include "zent/math/require.h"
#include "zent/proxies/Binding.h"

#include <stdexcept>

namespace zent {

namespace {

ShapeLayout layoutOf(const Mesh& shape) {
    return {"mesh", pointCount(shape), {}, {}, {}, {}};
}
ShapeLayout layoutOf(const Curve& shape) {
    return {"curve", shape.cv.size(), {shape.degree}, {shape.form}, {shape.knots}, {}};
}
ShapeLayout layoutOf(const Surface& shape) {
    return {"surface",
            pointCount(shape),
            {shape.degreeU, shape.degreeV},
            {shape.formU, shape.formV},
            {shape.knotsU, shape.knotsV},
            {}};
}
ShapeLayout layoutOf(const Lattice& shape) {
    return {"lattice", pointCount(shape), {}, {}, {}, {shape.s, shape.t, shape.u}};
}

void dropMatrix(Mesh& shape) {
    shape.matrixLinear = shape.inverseLinear = mat3(1.0f);
    shape.translation = shape.inverseTranslation = vec3(0.0f);
}
template <class T>
void dropMatrix(T& /*shape*/) {}

/// It deforms one shape of one point after the other in the same place, so that a point costs no allocation.
template <class T>
class PointDeformer {
public:
    PointDeformer(const ProxyDeformer<T>& deformer, const T& input)
        : deformer_(deformer), input_(input), undeformed_(onePointShape<T>(vec3(0.0f), matrixOf(input))) {}

    vec3 operator()(unsigned int index) {
        shape_ = undeformed_;
        for (vec3& point : pointsOf(shape_)) { // a curve of one point has it twice
            point = pointsOf(input_)[index];
        }
        deformer_.deform(shape_, index);
        return toWorld(shape_, pointsOf(shape_)[0]);
    }

private:
    const ProxyDeformer<T>& deformer_;
    const T& input_;
    const T undeformed_;
    T shape_;
};

template <class T>
class DeformerWalk : public PointWalk {
public:
    DeformerWalk(const ProxyDeformer<T>& deformer, const T& input, const T& output)
        : output_(output), onePoint_(deformer, input), all_(deformer.deformAll()),
          allPlace_(onePointShape<T>(vec3(0.0f), matrixOf(input))) {
        if (deformer.dropsMatrix()) {
            dropMatrix(allPlace_);
        }
    }

    unsigned int count() const override { return pointCount(output_); }
    ShapeLayout layout() const override { return layoutOf(output_); }
    vec3 maya(unsigned int index) const override { return toWorld(output_, pointsOf(output_)[index]); }
    vec3 zent(unsigned int index) override { return all_.empty() ? onePoint_(index) : toWorld(allPlace_, all_[index]); }

    unsigned int firstOff(unsigned int from, float epsilon) override {
        if (all_.empty()) {
            return PointWalk::firstOff(from, epsilon);
        }
        const AffineLanes mayaToWorld(output_.matrixLinear, output_.translation);
        const AffineLanes zentToWorld(allPlace_.matrixLinear, allPlace_.translation);
        const vec3* const mayaPoints = pointsOf(output_).data();
        const vec3* const zentPoints = all_.data();
        const unsigned int points = count();
        while (from < points &&
               firstThreeWithin(mayaToWorld(mayaPoints[from]), zentToWorld(zentPoints[from]), epsilon)) {
            ++from;
        }
        return from;
    }

private:
    const T& output_;
    PointDeformer<T> onePoint_;
    const std::vector<vec3> all_;
    T allPlace_; ///< a shape that stands as that of all_
};

void dropSamples(Surface& shape) {
    shape.closestSamples.clear();
}
template <class T>
void dropSamples(T& /*shape*/) {}

/// The whole shape by its adapter, point by point, so that its bits are those of the points that are compared.
template <class T>
class DeformerEvaluation : public Evaluation {
public:
    explicit DeformerEvaluation(ProxyDeformer<T>& deformer)
        : deformer_(deformer), count_(pointCount(deformer.undeformed())),
          points_(pointsOf(deformer.undeformed()).size()) {}

    Slot argument(unsigned int index, const EntryPlace& entry) override { return deformer_.slot(index, entry); }
    Slot output(unsigned int attribute, std::size_t position) override {
        return attribute == 0 && position == 0 ? slotOf(shape_) : Slot();
    }
    void evaluate() override {
        begin();
        evaluatePoints(0, count_);
    }
    void begin() override {
        const T& undeformed = deformer_.undeformed();
        if (pointCount(undeformed) != count_ || pointsOf(undeformed).size() != points_) {
            throw std::runtime_error("input geometry: its number of points has changed");
        }
        deformer_.prepare();
        if (const mat4 matrix = matrixOf(undeformed); matrix != matrix_) {
            matrix_ = matrix;
            onePoint_ = onePointShape<T>(vec3(0.0f), matrix);
        }
        shape_ = undeformed;
        dropSamples(shape_);
        if (deformer_.dropsMatrix()) {
            dropMatrix(shape_);
        }
    }
    unsigned int points() const override { return count_; }
    void evaluatePoints(unsigned int from, unsigned int to) override {
        deformer_.deformPoints(shape_, onePoint_, from, to);
    }
    void show(json& /*outputs*/) const override {}

private:
    ProxyDeformer<T>& deformer_;
    const unsigned int count_;
    const std::size_t points_;
    T shape_;
    mat4 matrix_{0.0f}; ///< of onePoint_
    T onePoint_;
};

} // namespace

template <class T>
std::unique_ptr<Evaluation> ProxyDeformer<T>::bind(const Arguments& args) {
    init(args, {args.get(inputArgument())});
    return std::make_unique<DeformerEvaluation<T>>(*this);
}

template <class T>
void ProxyDeformer<T>::deformPoints(T& shape, const T& onePoint, unsigned int from, unsigned int to) const {
    static thread_local T point; // so that evaluations after the first do not allocate
    PointWriter<T> write(shape);
    for (unsigned int i = from; i < to; ++i) {
        point = onePoint;
        for (vec3& copy : pointsOf(point)) { // a curve of one point has it twice
            copy = pointsOf(input)[i];
        }
        deform(point, i);
        write(i, pointsOf(point)[0]);
    }
}

template <class T>
void ProxyDeformer<T>::init(const Arguments& /*args*/, const std::vector<Port>& ports) {
    output = result<T>(ports, 0);
    requireAtLeast("outputGeometry[0] control points", pointsOf(output).size(), count(), "its count");
    cursor = 0;
}

template <class T>
bool ProxyDeformer<T>::isDone() const {
    const unsigned int count = pointCount(output);
    if (count == 0) {
        throw std::runtime_error("Empty Maya Shape");
    }
    return cursor == count;
}

template <class T>
std::unique_ptr<PointWalk> ProxyDeformer<T>::walk() const {
    return std::make_unique<DeformerWalk<T>>(*this, input, output);
}

template <class T>
json ProxyDeformer<T>::mayaResult(const std::vector<Port>& /*ports*/) const {
    return results(zent::output("outputGeometry[0]", Vertex{toWorld(output, pointsOf(output)[cursor])}));
}

template <class T>
json ProxyDeformer<T>::zentResult(const Arguments& /*args*/) const {
    return results(zent::output(Vertex{PointDeformer<T>(*this, input)(cursor)}));
}

template <class T>
void ProxyDeformer<T>::readInput(const Arguments& args, unsigned int index) {
    input = read<T>(args, index);
    requireAtLeast("inputGeometry", pointsOf(input).size(), count(), "outputGeometry[0]");
}

template <class T>
json ProxyDeformer<T>::deformerClosure(const char* node, float envelope, const Arguments& args,
                                       const std::vector<Port>& ports) const {
    json report = Proxy::closure(args, ports);
    report["node"] = node;
    report["inputs"] = results(zent::output("envelope", envelope),
                               zent::output("input[0].inputGeometry", Vertex{pointsOf(input)[cursor]}));
    return report;
}

template <class T>
MethodInfo ProxyDeformer<T>::deformerInfo(std::vector<ValueInfo> arguments) const {
    return {{}, {}, true, {valueInfo<T>("outputGeometry[0]")}, std::move(arguments)};
}

template class ProxyDeformer<Mesh>;
template class ProxyDeformer<Curve>;
template class ProxyDeformer<Surface>;
template class ProxyDeformer<Lattice>;

} // namespace zent
