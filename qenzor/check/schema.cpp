#include <array>
#include <tuple>
#include <type_traits>

#include "qenzor/catalogue.h"
#include "qenzor/check/schema_impl.h"
#include "qenzor/core/data_hooks.h"
#include "qenzor/core/fields.h"

namespace qenzor::check {

namespace {

template <class Chunk>
constexpr bool kIsSet = requires {
  typename Chunk::Element;
};
template <class Chunk>
constexpr bool kIsKeyed = requires {
  typename Chunk::Key;
};

constexpr Role RoleOf(std::string_view tag) {
  constexpr std::array<std::pair<std::string_view, Role>, 18> kRoles{
      {{"Ident", Role::kIdent},
       {"Magic", Role::kMagic},
       {"MajorVer", Role::kMajorVer},
       {"MinorVer", Role::kMinorVer},
       {"SegmentNumX", Role::kSegmentNumX},
       {"SegmentNumY", Role::kSegmentNumY},
       {"CompCoef", Role::kCompCoef},
       {"IncRect", Role::kIncRect},
       {"ScData", Role::kScaleBand},
       {"DenomMax", Role::kDenomMax},
       {"DenomMin", Role::kDenomMin},
       {"MeshSegmentNo", Role::kMeshSegmentNo},
       {"LayerNo", Role::kLayerNo},
       {"ZId", Role::kZId},
       {"DrawInfoIdx", Role::kDrawInfoIdx},
       {"MarkDataIdx", Role::kMarkDataIdx},
       {"BrushFileName", Role::kImageName},
       {"RasFileName", Role::kImageName}}};
  for (const auto& [name, role] : kRoles)
    if (name == tag) return role;
  return Role::kNone;
}

template <class Value, class Coding>
constexpr Shape ShapeOf() {
  if constexpr (std::is_same_v<Coding, ColorCoding>)
    return Shape::kColor;
  else if constexpr (std::is_same_v<Coding, IdentCoding>)
    return Shape::kIdent;
  else if constexpr (std::is_same_v<Coding, MagicCoding>)
    return Shape::kMagic;
  else if constexpr (std::is_same_v<Value, CRect>)
    return Shape::kRect;
  else if constexpr (std::is_floating_point_v<Value>)
    return Shape::kFloat;
  else if constexpr (std::is_unsigned_v<Value>)
    return Shape::kUnsigned;
  else if constexpr (std::is_signed_v<Value>)
    return Shape::kSigned;
  else
    return Shape::kPoint;
}

template <class Value, class Coding>
constexpr FieldSchema ValueSchema(std::string_view tag) {
  FieldSchema schema{tag, ShapeOf<Value, Coding>(), RoleOf(tag)};
  schema.Size = Coding::template kSize<Value>;
  const std::uint32_t parts = schema.Shape == Shape::kRect    ? 4
                              : schema.Shape == Shape::kPoint ? 2
                                                              : 1;
  schema.Width = static_cast<std::uint8_t>(schema.Size / parts);
  schema.IsCutInMemory = std::is_same_v<Value, CPoint16>;
  schema.KeepsWhenEmpty = std::is_same_v<Coding, KeptNumberCoding>;
  return schema;
}

template <class List>
struct Of;
/// The fields of a list, kept once for each class or record that they are of.
template <class List>
constexpr auto kFields = Of<List>::Make();

/// Names the list that a class, a record or a group inside one has.
template <class T>
struct ClassList {
  static constexpr auto Fields() { return FieldsOf<T>(); }
};
template <class T>
struct RecordList {
  static constexpr auto Fields() { return T::Fields(); }
};
template <class Outer, std::size_t kAt>
struct GroupList {
  static constexpr auto Fields() { return std::get<kAt>(Outer::Fields()).Members; }
};

template <class Chunk>
struct SchemaOfClass {
  static const ClassSchema kValue;
};

template <class List, std::size_t kAt, class O, class V, class C>
constexpr FieldSchema SchemaOf(const Field<O, V, C>& f) {
  return ValueSchema<V, C>(f.Tag);
}
template <class List, std::size_t kAt, class O, class V>
constexpr FieldSchema SchemaOf(const TextField<O, V>& f) {
  FieldSchema schema{f.Tag, Shape::kText, RoleOf(f.Tag)};
  schema.MaxBytes = f.MaxBytes;
  return schema;
}
template <class List, std::size_t kAt, class O, class Array>
constexpr FieldSchema SchemaOf(const ArrayField<O, Array>& f) {
  using Element = typename Array::value_type;
  FieldSchema schema;
  if constexpr (HasFields<Element>) {
    schema = {f.Tag, Shape::kRecord, RoleOf(f.Tag)};
    schema.Members = kFields<RecordList<Element>>;
    if constexpr (IsFixedSize<Element>()) schema.Size = PackedSize<Element>();
  } else {
    schema = ValueSchema<Element, DefaultCoding<Element>>(f.Tag);
  }
  schema.CountWidth = sizeof(typename Array::count_type);
  return schema;
}
template <class List, std::size_t kAt, class Members>
constexpr FieldSchema SchemaOf(const FieldGroup<Members>& f) {
  FieldSchema schema{f.Tag, Shape::kGroup};
  schema.Members = kFields<GroupList<List, kAt>>;
  return schema;
}
template <class List, std::size_t kAt, class O, class Slot, class Chunk>
constexpr FieldSchema SchemaOf(const SlotField<O, Slot, Chunk>& f) {
  FieldSchema schema{f.Tag, Shape::kChunk};
  schema.Class = &SchemaOfClass<Chunk>::kValue;
  return schema;
}

template <class List>
struct Of {
  static constexpr auto Make() {
    constexpr auto kList = List::Fields();
    return []<std::size_t... I>(std::index_sequence<I...>) {
      return std::array<FieldSchema, sizeof...(I)>{
          SchemaOf<List, I>(std::get<I>(List::Fields()))...};
    }
    (std::make_index_sequence<std::tuple_size_v<decltype(kList)>>{});
  }
};

template <class Chunk>
constexpr std::span<const FieldSchema> FieldSpan() {
  if constexpr (kIsSet<Chunk>)
    return {};
  else
    return kFields<ClassList<Chunk>>;
}

template <class Chunk>
bool Accepts(std::uint32_t id) {
  if constexpr (kIsSet<Chunk>)
    return AnyClass([id]<class Sub>(Sub) {
      return std::is_base_of_v<typename Chunk::Element, typename Sub::Chunk> && Sub::kChunkId == id;
    });
  else
    return !AllFields(FieldsOf<Chunk>(), [id]<class F>(const F& /*f*/) {
      if constexpr (requires { typename F::Chunk; })
        return F::Chunk::kChunkId != id;
      else
        return true;
    });
}

template <class Chunk>
constexpr auto ConsumedOf() -> std::uint32_t (*)(std::uint32_t, std::uint32_t) {
  if constexpr (requires { typename Chunk::Hooks; }) {
    if constexpr (kCountsItself<typename Chunk::DataType>)
      return [](std::uint32_t before, std::uint32_t consumed) {
        return HooksFor<typename Chunk::DataType>().MemoryConsumed(before, consumed);
      };
  }
  return nullptr;
}

template <class Chunk>
constexpr ClassSchema SchemaOfClass<Chunk>::kValue{
    Chunk::kChunkId,    Chunk::kTag,     kIsSet<Chunk>,      kIsKeyed<Chunk>,
    FieldSpan<Chunk>(), &Accepts<Chunk>, ConsumedOf<Chunk>()};

constexpr auto kClasses = [] {
  std::array<const ClassSchema*, kChunkIds> by_id{};
  ForEachClass([&by_id]<class Row>(Row) {
    by_id[Row::kChunkId] = &SchemaOfClass<typename Row::Chunk>::kValue;
  });
  return by_id;
}();

constexpr DocumentSchema kQenSchema{"Qen", "QenFileInfo", kFields<RecordList<QenFileInfo>>,
                                    PackedSize<QenFileInfo>(), &SchemaOfClass<CQenMapData>::kValue};
constexpr DocumentSchema kZorSchema{"Zor", "ZorFileInfo", kFields<RecordList<ZorFileInfo>>,
                                    PackedSize<ZorFileInfo>(),
                                    &SchemaOfClass<CZorDrawData>::kValue};

}  // namespace

const ClassSchema* FindClass(std::uint32_t id) noexcept {
  return id < kClasses.size() ? kClasses[id] : nullptr;
}

const ClassSchema* FindClass(std::string_view tag) noexcept {
  for (const ClassSchema* schema : kClasses)
    if (schema != nullptr && schema->Tag == tag) return schema;
  return nullptr;
}

std::span<const ClassSchema* const> AllClasses() noexcept { return kClasses; }

const DocumentSchema& QenSchema() noexcept { return kQenSchema; }
const DocumentSchema& ZorSchema() noexcept { return kZorSchema; }

}  // namespace qenzor::check
