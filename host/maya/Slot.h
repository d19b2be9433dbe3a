#pragma once

#include "Data.h"

#include <memory>
#include <string>
#include <vector>

namespace scene {

struct Node;

/// One plug of the scene: an attribute of a node, a child of a compound, or an element of a multi. Its `type` is that
/// of its attribute.
struct Slot : Object {
    enum class Kind : unsigned char {
        number,
        angle,
        time,
        data, ///< whatever Data.h has
        compound,
        multi,
        message ///< stands for a node, and has no value
    };
    struct OtherNames {
        std::string shortName;
        std::string alias;
    };

    Kind kind = Kind::number;
    bool isElement = false;
    unsigned int logicalIndex = 0; ///< of an element; of a compound's child, its position
    int unit = 0;                  ///< of an angle (MAngle::Unit) or a time (MTime::Unit)
    MFn::Type dataType = MFn::kInvalid;
    double number = 0.0; ///< a number, an angle or a time, in its unit
    Node* node = nullptr;
    Slot* parent = nullptr; ///< the compound or the multi that it belongs to
    Slot* source = nullptr; ///< the plug at the other end of the connection into this one
    std::string name;       ///< long; an element has its multi's
    std::shared_ptr<const Object> data;
    std::vector<Slot*> children; ///< a compound's, in order, or a multi's elements by logical index
    std::unique_ptr<OtherNames> otherNames;
    Slot* prototype = nullptr; ///< what an element of a multi looks like when there is none to copy
};

/// The plug whose value this one has: itself, or the source of its connection or of one of the plugs above it; a blank
/// one of its own kind where the source lacks such an element.
const Slot& evaluated(const Slot& slot);

/// The step that `evaluated` repeats; null at the end, and where the source has no such element.
const Slot* nextSource(const Slot& slot);

/// The element of a logical index, null if the multi has none.
Slot* existingElement(const Slot& multi, unsigned int index);

struct NameStyle {
    bool alias = false;
    bool fullPath = false;
    bool longNames = true;
};
/// "attribute[3].child", from the attribute on or, without `fullPath`, from the first level that needs telling.
std::string plugName(const Slot& slot, NameStyle style);

} // namespace scene
