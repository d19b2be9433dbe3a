#pragma once

/// The space in which geometry is read.
class MSpace {
public:
    enum Space {
        kInvalid = 0,
        kTransform = 1,
        kPreTransform = 2,  ///< object space
        kPostTransform = 3, ///< world space
        kWorld = 4,
        kObject = kPreTransform,
        kLast = 5
    };
};
