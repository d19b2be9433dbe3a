#pragma once

namespace zent {

// What MObject::apiType gives for the attributes and the data that are not read as plain numbers.
inline constexpr int kDoubleAngleAttribute = 563;
inline constexpr int kFloatAngleAttribute = 564;
inline constexpr int kTimeAttribute = 567;
inline constexpr int kTypedAttribute = 570;
inline constexpr int kFloatMatrixAttribute = 575;
inline constexpr int kOtherFloatMatrixAttribute = 667;
inline constexpr int kData2Double = 588;
inline constexpr int kData3Double = 592;

} // namespace zent
