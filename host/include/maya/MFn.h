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
        kMessageAttribute = 576,
        kMatrixFloatData = 667,
        kComponentListData = 581,
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
        kPointArrayData = 594,
        kLattice = 279,
        kCurveCVComponent = 525,
        kSurfaceCVComponent = 531,
        kLatticeComponent = 535,
        kMeshEdgeComponent = 540,
        kMeshPolygonComponent = 541,
        kMeshVertComponent = 543
    };
};
