#pragma once

/// A point in double precision.
class MPoint {
public:
    MPoint() = default;
    MPoint(double xx, double yy, double zz = 0.0, double ww = 1.0) : x(xx), y(yy), z(zz), w(ww) {}

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    double w = 1.0;
};
