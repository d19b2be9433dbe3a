#pragma once

#include "zent/proxies/ProxyDeformer.h"

namespace zent {

/// The adapter of `ffd<T>`; T is Mesh or Surface.
template <class T>
class ProxyFFD : public ProxyDeformer<T> {
public:
    std::string name() const override { return std::string("ffd") + shapeName<T>(); }
    void init(const Arguments& args, const std::vector<Port>& ports) override;
    void deform(T& point, unsigned int index) const override;

private:
    Lattice lattice;
    mat4 deformedLatticeMatrix{1.0f};
    mat4 baseLatticeMatrix{1.0f};
    bool local = false;
    unsigned int influenceS = 0;
    unsigned int influenceT = 0;
    unsigned int influenceU = 0;
};

extern template class ProxyFFD<Mesh>;
extern template class ProxyFFD<Surface>;

} // namespace zent
