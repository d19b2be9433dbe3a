#pragma once

/// The types of what an MObject refers to. Only those that someone asks for are here; the values of attribute and data
/// types are Maya's where a caller compares them.
class MFn {
public:
    enum Type {
        kInvalid = 0,
        kDependencyNode = 4,
        kDagNode = 107,
        kNumericAttribute = 561,
        kDoubleAngleAttribute = 563,
        kFloatAngleAttribute = 564,
        kTimeAttribute = 567,
        kTypedAttribute = 570,
        kCompoundAttribute = 571,
        kMatrixAttribute = 574,
        kFloatMatrixAttribute = 575,
        kMatrixFloatData = 667,
        kLatticeData = 583,
        kMatrixData = 580,
        kMeshData = 584,
        kNurbsCurveData = 585,
        kNurbsSurfaceData = 586,
        kStringData = 587,
        kData2Double = 588,
        kData2Float = 589,
        kData3Double = 592,
        kData3Float = 593,
        kLattice = 279
    };
};
