#pragma once

#include <maya/MArrayOf.h>

class MDoubleArray : public MArrayOf<double> {
public:
    using MArrayOf<double>::MArrayOf;
};
