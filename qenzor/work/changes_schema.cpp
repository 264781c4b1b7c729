#include <nlohmann/json.hpp>

#include "qenzor/check/schema_impl.h"
#include "qenzor/work/places_impl.h"
#include "qenzor/work/schema.h"

namespace qenzor {

namespace {

using check::ClassSchema;
using check::FieldSchema;
using check::Shape;
using Schema = nlohmann::ordered_json;

Schema IntegerOf(std::uint8_t width, bool is_signed) {
  if (width == 8)
    return {
        {"oneOf",
         {{{"type", "integer"}, {"minimum", 0}}, {{"type", "string"}, {"pattern", "^[0-9]+$"}}}}};
  const std::int64_t range = std::int64_t{1} << (8U * width);
  return {{"type", "integer"},
          {"minimum", is_signed ? -range / 2 : 0},
          {"maximum", (is_signed ? range / 2 : range) - 1}};
}

Schema ListOf(const Schema& items) { return {{"type", "array"}, {"items", items}}; }

Schema ListOfSome(const Schema& items, std::size_t count) {
  Schema list = ListOf(items);
  list["minItems"] = list["maxItems"] = count;
  return list;
}

Schema StringLike(const char* pattern) { return {{"type", "string"}, {"pattern", pattern}}; }

Schema Reference(std::string_view tag) { return {{"$ref", "#/definitions/" + std::string(tag)}}; }

Schema ObjectOf(const Schema& members) {
  return {{"type", "object"}, {"properties", members}, {"additionalProperties", false}};
}

Schema MembersOf(std::span<const FieldSchema> fields);

Schema ValueOf(const FieldSchema& field) {
  switch (field.Shape) {
    case Shape::kUnsigned:
    case Shape::kMagic:
      return IntegerOf(field.Width, false);
    case Shape::kSigned:
      return IntegerOf(field.Width, true);
    case Shape::kFloat:
      return {{"oneOf", {{{"type", "number"}}, StringLike("^(-?inf|nan:[0-9A-Fa-f]{8})$")}}};
    case Shape::kColor:
      return StringLike("^#[0-9A-Fa-f]{8}$");
    case Shape::kIdent:
      return {{"oneOf",
               {{{"type", "string"}, {"minLength", field.Size}, {"maxLength", field.Size}},
                ListOfSome(IntegerOf(1, false), field.Size)}}};
    case Shape::kPoint:
      return ListOfSome(IntegerOf(field.Width, true), 2);
    case Shape::kRect:
      return ListOfSome(IntegerOf(field.Width, true), 4);
    case Shape::kText:
      return {{"oneOf", {{{"type", "string"}}, ListOf(IntegerOf(2, false))}}};
    case Shape::kGroup:
    case Shape::kRecord:
      return ObjectOf(MembersOf(field.Members));
    case Shape::kChunk:
      return {{"oneOf", {{{"type", "null"}}, Reference(field.Class->Tag)}}};
  }
  return {};
}

Schema MembersOf(std::span<const FieldSchema> fields) {
  Schema members = Schema::object();
  for (const FieldSchema& field : fields) {
    if (field.Shape == Shape::kGroup)
      members.update(MembersOf(field.Members));
    else
      members[std::string(field.Tag)] =
          field.CountWidth > 0 ? ListOf(ValueOf(field)) : ValueOf(field);
  }
  return members;
}

/// Whether objects of the class tell it, because a set may hold other ones beside them.
bool TellsClass(const ClassSchema& schema) {
  return AnyClass([&]<class Row>(Row /*row*/) {
    if constexpr (Row::kIsSet)
      return work::kTellsClass<typename Row::Chunk> &&
             check::FindClass(Row::kChunkId)->Accepts(schema.Id);
    else
      return false;
  });
}

Schema DefinitionOf(const ClassSchema& schema) {
  if (schema.IsSet) {
    Schema elements = Schema::array();
    for (const ClassSchema* element : check::AllClasses())
      if (element != nullptr && schema.Accepts(element->Id))
        elements.push_back(Reference(element->Tag));
    return ListOf({{"oneOf", elements}});
  }
  Schema members = Schema::object();
  const bool tells_class = TellsClass(schema);
  if (tells_class) members["class"] = {{"const", std::string(schema.Tag)}};
  members.update(MembersOf(schema.Fields));
  Schema object = ObjectOf(members);
  if (tells_class) object["required"] = {"class"};
  return object;
}

/// The members by which changes of a document's elements tell their place, and the elements that
/// may be added or deleted there.
struct Places {
  Schema Members = Schema::object();
  Schema Elements = Schema::array();
};

template <class Owner>
void CollectPlaces(Places& places) {
  work::AllValues(FieldsOf<Owner>(), [&]<class Entry>(const Entry& /*f*/) {
    if constexpr (requires { typename Entry::Chunk::Element; }) {
      using Chunk = typename Entry::Chunk;
      const std::string key(work::KeyOfElements<Chunk>());
      const Schema number{{"type", "integer"}, {"minimum", 0}};
      for (const ClassSchema* element : check::AllClasses())
        if (element != nullptr && check::FindClass(Chunk::kChunkId)->Accepts(element->Id))
          places.Elements.push_back(Reference(element->Tag));
      if constexpr (work::Numbered<typename Chunk::Element>) {
        places.Members[key] = {{"oneOf", {number, StringLike("^([0-9]+(#[0-9]+)?|all)$")}}};
        CollectPlaces<typename Chunk::Element>(places);
      } else {
        places.Members[key] = {{"oneOf", {number, {{"const", "end"}}}}};
      }
    }
    return true;
  });
}

template <class Root>
Schema ChangeOf() {
  Places places;
  CollectPlaces<Root>(places);
  const Schema index{{"type", "integer"}, {"minimum", 0}};
  const auto change = [&](const char* op, Schema members, std::vector<std::string> required) {
    members["op"] = {{"const", op}};
    members.update(places.Members);
    Schema object = ObjectOf(members);
    required.insert(required.begin(), "op");
    object["required"] = required;
    return object;
  };
  const Schema value{{"oneOf", places.Elements}};
  return {{"oneOf",
           {change("set", {{"field", {{"type", "string"}}}, {"from", true}, {"to", true}},
                   {"field", "to"}),
            change("add", {{"position", index}, {"value", value}}, {"value"}),
            change("delete", {{"position", index}, {"value", value}}, {}),
            change("move", {{"position", index}, {"to", index}}, {"to"})}}};
}

template <class Root>
Schema DocumentOf(const char* kind) {
  return {{"type", "object"},
          {"properties",
           {{"format", {{"const", "qenzor-changes"}}},
            {"version", {{"const", 1}}},
            {"document", {{"const", kind}}},
            {"changes", ListOf(ChangeOf<Root>())}}},
          {"required", {"format", "version", "document", "changes"}},
          {"additionalProperties", false}};
}

}  // namespace

CString RenderChangesSchema() {
  Schema definitions = Schema::object();
  ForEachClass([&]<class Row>(Row /*row*/) {
    definitions[std::string(Row::kTag)] = DefinitionOf(*check::FindClass(Row::kChunkId));
  });
  const Schema schema{{"$schema", "http://json-schema.org/draft-07/schema#"},
                      {"title", "Changes between two qenzor documents"},
                      {"oneOf", {DocumentOf<CQenMapData>("qen"), DocumentOf<CZorDrawData>("zor")}},
                      {"definitions", definitions}};
  return schema.dump(1) + '\n';
}

}  // namespace qenzor
