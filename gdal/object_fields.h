#pragma once

#include <ogr_feature.h>

#include <string>
#include <type_traits>

#include "qenzor/core/fields.h"
#include "qenzor/platform/code_page.h"
#include "qenzor/platform/geometry.h"
#include "qenzor/qen/all.h"
#include "qenzor/view/objects.h"

namespace qenzor::gdal {

/// Calls f.operator()<Class>() with the class of the objects of a kind.
template <class F>
decltype(auto) WithClassOf(ObjectKind kind, F&& f) {
  switch (kind) {
    case ObjectKind::kLine:
      return f.template operator()<CLineObj>();
    case ObjectKind::kPolygon:
      return f.template operator()<CPolyObj>();
    case ObjectKind::kLabel:
      return f.template operator()<CCmbLblObj>();
    case ObjectKind::kRasterRect:
      return f.template operator()<CRasLLObj>();
    case ObjectKind::kRasterPoint:
      break;
  }
  return f.template operator()<CRasMMObj>();
}

/// Calls f with those entries of a class's field list that are values: numbers and texts, not
/// places, which are the geometry, nor what it owns.
template <class Class, class F>
void ForEachValueField(F&& f) {
  ForEachField(Class::DataType::Fields(), [&]<class Entry>(const Entry& entry) {
    if constexpr (requires { typename Entry::ValueType; }) {
      if constexpr (std::is_arithmetic_v<typename Entry::ValueType>) f(entry);
    } else if constexpr (requires { entry.MaxBytes; }) {
      f(entry);
    }
  });
}

inline std::string ToUtf8(const CStringW& text) { return EncodeText(text, TextEncoding::kUtf8); }

/// Adds a field definition for each value of the objects of a kind, under its tag.
inline void AddValueFields(ObjectKind kind, OGRFeatureDefn& layer) {
  WithClassOf(kind, [&]<class Class>() {
    ForEachValueField<Class>([&]<class Entry>(const Entry& entry) {
      OGRFieldDefn field(std::string(entry.Tag).c_str(), OFTString);
      if constexpr (requires { typename Entry::ValueType; }) {
        using Value = typename Entry::ValueType;
        if constexpr (std::is_floating_point_v<Value>) {
          field.SetType(OFTReal);
          field.SetSubType(OFSTFloat32);
        } else {
          field.SetType(sizeof(Value) < 4 || std::is_signed_v<Value> ? OFTInteger : OFTInteger64);
        }
      }
      layer.AddFieldDefn(&field);
    });
  });
}

/// Gives the feature the values of an object, in the fields from first on.
inline void SetValueFields(const ObjectAt& at, int first, OGRFeature& feature) {
  WithClassOf(at.Kind, [&]<class Class>() {
    const auto& object = at.As<Class>();
    int index = first;
    ForEachValueField<Class>([&]<class Entry>(const Entry& entry) {
      const int at_hand = index++;
      if (feature.GetFieldDefnRef(at_hand)->IsIgnored()) return;
      const auto& value = object.*entry.Member;
      if constexpr (!requires { typename Entry::ValueType; })
        feature.SetField(at_hand, ToUtf8(value).c_str());
      else if constexpr (std::is_floating_point_v<typename Entry::ValueType>)
        feature.SetField(at_hand, static_cast<double>(value));
      else
        feature.SetField(at_hand, static_cast<GIntBig>(value));
    });
  });
}

/// Takes the values of an object from a feature: those fields that it has, by their names. A number
/// beyond what the object holds is refused: false.
inline bool TakeValueFields(const OGRFeature& feature, ObjectKind kind, CAbstractObjEdit& edit) {
  bool fits = true;
  WithClassOf(kind, [&]<class Class>() {
    auto& object = static_cast<typename Class::EditClass&>(edit);
    ForEachValueField<typename Class::EditClass>([&]<class Entry>(const Entry& entry) {
      const int index = feature.GetFieldIndex(std::string(entry.Tag).c_str());
      if (index < 0 || !feature.IsFieldSetAndNotNull(index)) return;
      auto& value = object.*entry.Member;
      using Value = std::remove_reference_t<decltype(value)>;
      if constexpr (std::is_floating_point_v<Value>) {
        value = static_cast<Value>(feature.GetFieldAsDouble(index));
      } else if constexpr (std::is_integral_v<Value>) {
        const GIntBig number = feature.GetFieldAsInteger64(index);
        fits = fits && std::in_range<Value>(number);
        value = static_cast<Value>(number);
      } else {
        value = DecodeText(feature.GetFieldAsString(index), TextEncoding::kUtf8);
      }
    });
  });
  return fits;
}

}  // namespace qenzor::gdal
