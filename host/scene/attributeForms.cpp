#include "scene/attributeForms.h"

#include "scene/components.h"
#include "scene/values.h"

#include <maya/MAngle.h>
#include <maya/MTime.h>

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <limits>
#include <stdexcept>
#include <string_view>

namespace scene {

namespace {

struct Reader {
    Scene& scene;
    GeometryReader& geometry;

    void attribute(Slot& slot, const Json& value) const;
    void object(Slot& slot, const Json& value) const;
    void shortCompound(Slot& slot, const Json& value) const;
    void compound(Slot& slot, const Json& children) const;
    void multi(Slot& slot, const Json& elements) const;
    void element(Slot& multi, unsigned int index, const Json& value) const;
};

using ReadForm = void (*)(const Reader&, Slot&, const Json&);

/// A way to tell an attribute: the key of its value, the type of the attribute, and how its value is read.
struct Form {
    std::string_view key;
    MFn::Type type;
    MFn::Type otherType; // what the option "type" may say instead
    ReadForm read;
};

void setNumber(Slot& slot, Slot::Kind kind, const char* name, const Json& value, int unit = 0) {
    slot.kind = kind;
    slot.number = value.is_boolean() ? (value.get<bool>() ? 1.0 : 0.0) : readNumber(slot, name, value);
    slot.unit = unit;
}

void setData(Slot& slot, MFn::Type type, std::shared_ptr<const Object> data) {
    slot.kind = Slot::Kind::data;
    slot.dataType = type;
    slot.data = std::move(data);
}

void readString(const Reader&, Slot& slot, const Json& value) {
    auto data = std::make_shared<StringData>();
    data->type = StringData::kType;
    data->text = readText(slot, "text", value);
    setData(slot, data->type, data);
}

template <MFn::Type type, std::size_t size>
void readNumeric(const Reader&, Slot& slot, const Json& value) {
    requireList(slot, "value", value, size);
    auto data = std::make_shared<NumericData>();
    data->type = type;
    for (std::size_t i = 0; i < size; ++i) {
        data->values[i] = readNumber(slot, "value", value[i]);
    }
    setData(slot, type, data);
}

void readMatrixForm(const Reader&, Slot& slot, const Json& value) {
    auto data = std::make_shared<MatrixData>();
    data->type = MatrixData::kType;
    data->matrix = readMatrix(slot, "matrix", value);
    for (unsigned int i = 0; i < 16; ++i) {
        data->narrowed[i / 4][i % 4] = static_cast<float>(data->matrix(i / 4, i % 4));
    }
    setData(slot, data->type, data);
}

template <class T>
void readGeometry(const Reader& reader, Slot& slot, const Json& value) {
    setData(slot, T::kType, value.is_null() ? nullptr : reader.geometry.read<T>(slot, value));
}

void readMessage(const Reader&, Slot& slot, const Json& value) {
    if (!value.is_null()) {
        failAt(slot,
               fmt::format("\"message\" should be null, not {}: only a connection gives it a node", value.type_name()));
    }
    slot.kind = Slot::Kind::message;
}

void readPointArray(const Reader&, Slot& slot, const Json& value) {
    if (value.is_null()) {
        return setData(slot, PointArrayData::kType, nullptr);
    }
    auto data = std::make_shared<PointArrayData>();
    data->type = PointArrayData::kType;
    for (const Json& point : requireList(slot, "points", value)) {
        data->points.append(readPoint(slot, "points", point));
    }
    setData(slot, data->type, data);
}

void readComponentList(const Reader&, Slot& slot, const Json& value) {
    if (value.is_null()) {
        return setData(slot, ComponentListData::kType, nullptr);
    }
    auto data = std::make_shared<ComponentListData>();
    data->type = ComponentListData::kType;
    for (const Json& item : requireList(slot, "components", value)) {
        data->components.push_back(readComponent(slot, readText(slot, "components", item)));
    }
    setData(slot, data->type, data);
}

constexpr Form kForms[] = {
    {"number", MFn::kNumericAttribute, MFn::kInvalid,
     [](const Reader&, Slot& slot, const Json& value) { setNumber(slot, Slot::Kind::number, "number", value); }},
    {"text", MFn::kTypedAttribute, MFn::kInvalid, readString},
    {"angle", MFn::kDoubleAngleAttribute, MFn::kFloatAngleAttribute,
     [](const Reader&, Slot& slot, const Json& value) {
         setNumber(slot, Slot::Kind::angle, "angle", value, MAngle::kDegrees);
     }},
    {"time", MFn::kTimeAttribute, MFn::kInvalid,
     [](const Reader&, Slot& slot, const Json& value) {
         setNumber(slot, Slot::Kind::time, "time", value, MTime::kFilm);
     }},
    {"compound", MFn::kCompoundAttribute, MFn::kInvalid,
     [](const Reader& reader, Slot& slot, const Json& value) { reader.compound(slot, value); }},
    {"multi", MFn::kNumericAttribute, MFn::kInvalid,
     [](const Reader& reader, Slot& slot, const Json& value) { reader.multi(slot, value); }},
    {"float2", MFn::kNumericAttribute, MFn::kInvalid, readNumeric<MFn::kData2Float, 2>},
    {"double2", MFn::kNumericAttribute, MFn::kInvalid, readNumeric<MFn::kData2Double, 2>},
    {"float3", MFn::kNumericAttribute, MFn::kInvalid, readNumeric<MFn::kData3Float, 3>},
    {"double3", MFn::kNumericAttribute, MFn::kInvalid, readNumeric<MFn::kData3Double, 3>},
    {"matrix", MFn::kMatrixAttribute, MFn::kInvalid, readMatrixForm},
    {"matrixData", MFn::kTypedAttribute, MFn::kInvalid, readMatrixForm},
    {"floatMatrix", MFn::kFloatMatrixAttribute, MFn::kMatrixFloatData, readMatrixForm},
    {"mesh", MFn::kTypedAttribute, MFn::kInvalid, readGeometry<MeshData>},
    {"curve", MFn::kTypedAttribute, MFn::kInvalid, readGeometry<CurveData>},
    {"surface", MFn::kTypedAttribute, MFn::kInvalid, readGeometry<SurfaceData>},
    {"lattice", MFn::kTypedAttribute, MFn::kInvalid, readGeometry<LatticeData>},
    {"points", MFn::kTypedAttribute, MFn::kInvalid, readPointArray},
    {"components", MFn::kTypedAttribute, MFn::kInvalid, readComponentList},
    {"message", MFn::kMessageAttribute, MFn::kInvalid, readMessage},
};

const Form* formOf(std::string_view key) {
    const Form* found =
        std::find_if(std::begin(kForms), std::end(kForms), [key](const Form& form) { return form.key == key; });
    return found == std::end(kForms) ? nullptr : found;
}

/// The position of a unit's name, from 1 on, is its number in the API.
int readUnit(const Slot& slot, const Json& value) {
    switch (slot.kind) {
    case Slot::Kind::angle:
        return readWord(slot, "unit", value, {"radians", "degrees", "minutes", "seconds"});
    case Slot::Kind::time:
        return readWord(slot, "unit", value,
                        {"hours", "minutes", "seconds", "milliseconds", "games", "film", "palFrame", "ntscFrame",
                         "showScan", "palField", "ntscField"});
    default:
        failAt(slot, "only an angle or a time has a \"unit\"");
    }
}

MFn::Type readType(const Slot& slot, const Form& form, const Json& value) {
    const unsigned int type = readCount(slot, "type", value, std::numeric_limits<unsigned short>::max());
    if (type != static_cast<unsigned int>(form.type) &&
        (form.otherType == MFn::kInvalid || type != static_cast<unsigned int>(form.otherType))) {
        failAt(slot, fmt::format("\"{}\" has no attribute type {}", form.key, type));
    }
    return static_cast<MFn::Type>(type);
}

Slot::OtherNames& otherNames(Slot& slot) {
    if (slot.otherNames == nullptr) {
        slot.otherNames = std::make_unique<Slot::OtherNames>();
    }
    return *slot.otherNames;
}

void Reader::object(Slot& slot, const Json& value) const {
    const Form* form = nullptr;
    for (const auto& [key, member] : members(value)) {
        if (const Form* found = formOf(key)) {
            if (form != nullptr) {
                failAt(slot, fmt::format("is both \"{}\" and \"{}\"", form->key, key));
            }
            form = found;
            slot.type = form->type;
            form->read(*this, slot, member);
        }
    }
    if (form == nullptr) {
        failAt(slot, "has none of the keys that tell an attribute: \"number\", \"angle\", \"compound\", ...");
    }
    for (const auto& [key, member] : members(value)) {
        if (key == "unit") {
            slot.unit = readUnit(slot, member);
        } else if (key == "type") {
            slot.type = readType(slot, *form, member);
        } else if (key == "short") {
            otherNames(slot).shortName = readText(slot, "short", member);
        } else if (key == "alias") {
            otherNames(slot).alias = readText(slot, "alias", member);
        } else if (key == "element" && slot.kind == Slot::Kind::multi) {
            attribute(scene.addPrototype(slot), member);
        } else if (key != form->key) {
            failAt(slot, fmt::format("\"{}\" has no \"{}\"", form->key, key));
        }
    }
    if (slot.kind == Slot::Kind::multi && !(slot.children.empty() && slot.prototype == nullptr)) {
        slot.type = slot.children.empty() ? slot.prototype->type : slot.children.front()->type;
    }
}

void Reader::shortCompound(Slot& slot, const Json& value) const {
    constexpr std::string_view kAxes = "XYZW";
    if (value.size() < 2 || value.size() > kAxes.size()) {
        failAt(slot, fmt::format("a list of {} is no compound; two to four values make one", value.size()));
    }
    slot.kind = Slot::Kind::compound;
    slot.type = MFn::kCompoundAttribute;
    for (std::size_t i = 0; i < value.size(); ++i) {
        attribute(scene.addChild(slot, slot.name + kAxes[i]), value[i]);
    }
}

void Reader::compound(Slot& slot, const Json& children) const {
    requireObject(slot, "compound", children);
    requireDistinctNames(children, [&slot] { return fullName(slot); });
    slot.kind = Slot::Kind::compound;
    for (const auto& [name, value] : members(children)) {
        attribute(scene.addChild(slot, name), value);
    }
}

void Reader::element(Slot& multi, unsigned int index, const Json& value) const {
    Slot& added = scene.addElement(multi, index);
    attribute(added, value);
    const Slot& first = *multi.children.front();
    if (added.kind != first.kind || added.type != first.type || added.dataType != first.dataType) {
        failAt(added, "is of another kind than " + fullName(first));
    }
}

void Reader::multi(Slot& slot, const Json& elements) const {
    slot.kind = Slot::Kind::multi;
    if (elements.is_array()) {
        for (std::size_t i = 0; i < elements.size(); ++i) {
            element(slot, static_cast<unsigned int>(i), elements[i]);
        }
        return;
    }
    std::vector<std::pair<unsigned int, const Json*>> byIndex;
    for (const auto& [key, value] : members(requireObject(slot, "multi", elements))) {
        unsigned int index = 0;
        const auto [stop, error] = std::from_chars(key.data(), key.data() + key.size(), index);
        if (error != std::errc() || stop != key.data() + key.size()) {
            failAt(slot, fmt::format("\"{}\" is no logical index", key));
        }
        byIndex.emplace_back(index, &value);
    }
    // In ascending order each one goes to the end, however the file has them.
    std::sort(byIndex.begin(), byIndex.end(), [](const auto& a, const auto& b) { return a.first < b.first; });
    for (const auto& [index, value] : byIndex) {
        element(slot, index, *value);
    }
}

void Reader::attribute(Slot& slot, const Json& value) const {
    if (value.is_number() || value.is_boolean()) {
        setNumber(slot, Slot::Kind::number, "number", value);
    } else if (value.is_string()) {
        slot.type = MFn::kTypedAttribute;
        readString(*this, slot, value);
    } else if (value.is_array()) {
        shortCompound(slot, value);
    } else if (value.is_object()) {
        object(slot, value);
    } else {
        failAt(slot, "should be a number, a text, a list or an object, not null");
    }
}

} // namespace

void readAttribute(Scene& scene, GeometryReader& geometry, Slot& slot, const Json& value) {
    Reader{scene, geometry}.attribute(slot, value);
}

void requireDistinctNames(const Json& object, const std::function<std::string()>& owner, std::string_view special) {
    std::vector<std::string_view> names;
    names.reserve(object.size());
    for (const auto& [name, value] : members(object)) {
        if (name.empty() || (name != special && name.find_first_of(".[]") != std::string::npos)) {
            throw std::runtime_error(fmt::format("{}: \"{}\" is no attribute's name", owner(), name));
        }
        names.push_back(name);
    }
    std::sort(names.begin(), names.end());
    const auto twin = std::adjacent_find(names.begin(), names.end());
    if (twin != names.end()) {
        throw std::runtime_error(fmt::format("{}: there are two \"{}\"", owner(), *twin));
    }
}

} // namespace scene
