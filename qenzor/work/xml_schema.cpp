#include <limits>
#include <string_view>

#include "qenzor/check/schema_impl.h"
#include "qenzor/text/converter_of.h"
#include "qenzor/work/schema.h"

namespace qenzor {

namespace {

using check::ClassSchema;
using check::DocumentSchema;
using check::FieldSchema;
using check::Shape;

/// The simple types that values have. Floats beyond numbers are written as printf does.
constexpr std::string_view kValueTypes = R"xsd(  <xs:simpleType name="Float">
    <xs:union memberTypes="xs:float">
      <xs:simpleType>
        <xs:restriction base="xs:token">
          <xs:pattern value="-?(inf|nan)"/>
        </xs:restriction>
      </xs:simpleType>
    </xs:union>
  </xs:simpleType>
  <xs:simpleType name="Magic">
    <xs:restriction base="xs:token">
      <xs:pattern value="0x[0-9A-Fa-f]{1,8}"/>
    </xs:restriction>
  </xs:simpleType>
  <xs:complexType name="Color">
    <xs:attribute name="A" type="xs:unsignedByte"/>
    <xs:attribute name="R" type="xs:unsignedByte"/>
    <xs:attribute name="G" type="xs:unsignedByte"/>
    <xs:attribute name="B" type="xs:unsignedByte"/>
  </xs:complexType>
  <xs:complexType name="Point">
    <xs:attribute name="x" type="xs:int"/>
    <xs:attribute name="y" type="xs:int"/>
  </xs:complexType>
  <xs:complexType name="Rect">
    <xs:attribute name="W" type="xs:int"/>
    <xs:attribute name="S" type="xs:int"/>
    <xs:attribute name="E" type="xs:int"/>
    <xs:attribute name="N" type="xs:int"/>
  </xs:complexType>
)xsd";

CString NumberType(bool is_signed, std::uint8_t width) {
  const char* const name = width == 1 ? "Byte" : width == 2 ? "Short" : width == 4 ? "Int" : "Long";
  CString type = is_signed ? "" : CString("unsigned") + name;
  if (is_signed) {
    type = name;
    type.front() = static_cast<char>(type.front() - 'A' + 'a');
  }
  return "xs:" + type;
}

CString TypeOf(const FieldSchema& field) {
  switch (field.Shape) {
    case Shape::kUnsigned:
      return NumberType(false, field.Width);
    case Shape::kSigned:
      return NumberType(true, field.Width);
    case Shape::kFloat:
      return "Float";
    case Shape::kColor:
      return "Color";
    case Shape::kMagic:
      return "Magic";
    case Shape::kPoint:
      return "Point";
    case Shape::kRect:
      return "Rect";
    case Shape::kChunk:
      return CString(field.Class->Tag);
    default:
      return "xs:string";
  }
}

/// Whether a class has a converter of its own, which may write a field more than once and take text
/// that stands in the element itself.
bool WritesItself(const ClassSchema& schema) {
  return AnyClass([&]<class Row>(Row /*row*/) {
    return !Row::kIsSet && Row::kTag == schema.Tag &&
           !std::is_base_of_v<CConverterOf<typename Row::Chunk>, typename Row::Converter>;
  });
}

class CSchemaWriter {
 public:
  CString Write(const DocumentSchema& document, ClassFamily family) {
    Line("<?xml version=\"1.0\" encoding=\"UTF-8\"?>");
    Open("xs:schema xmlns:xs=\"http://www.w3.org/2001/XMLSchema\"");
    Open("xs:element name=\"" + CString(document.Tag) + '"');
    Open("xs:complexType");
    Open("xs:sequence");
    Group(document.InfoTag, document.InfoFields, false);
    Line("<xs:element name=\"" + CString(document.Root->Tag) + "\" type=\"" +
         CString(document.Root->Tag) + "\" minOccurs=\"0\"/>");
    for (const char* end : {"xs:sequence", "xs:complexType", "xs:element"}) Close(end);
    m_text += kValueTypes;
    ForEachClass([&]<class Row>(Row /*row*/) {
      if (Row::kFamily == family) Class(*check::FindClass(Row::kChunkId));
    });
    Close("xs:schema");
    return std::move(m_text);
  }

 private:
  void Line(const CString& text) { m_text += CString(2 * m_depth, ' ') + text + '\n'; }
  void Open(const CString& tag) {
    Line('<' + tag + '>');
    ++m_depth;
  }
  void Close(const CString& name) {
    --m_depth;
    Line("</" + name + '>');
  }

  /// An element around fields.
  void Group(std::string_view tag, std::span<const FieldSchema> fields, bool is_array) {
    Open("xs:element name=\"" + CString(tag) + "\" minOccurs=\"0\"" +
         (is_array ? " maxOccurs=\"unbounded\"" : ""));
    Open("xs:complexType");
    Fields(fields);
    Close("xs:complexType");
    Close("xs:element");
  }
  void Fields(std::span<const FieldSchema> fields) {
    Open("xs:sequence");
    for (const FieldSchema& field : fields) {
      const bool is_array = field.CountWidth > 0;
      if (field.Shape == Shape::kGroup || field.Shape == Shape::kRecord)
        Group(field.Tag, field.Members, is_array);
      else
        Value(field, is_array);
    }
    Close("xs:sequence");
  }
  void Value(const FieldSchema& field, bool is_repeated) {
    Line("<xs:element name=\"" + CString(field.Tag) + "\" type=\"" + TypeOf(field) +
         "\" minOccurs=\"0\"" + (is_repeated ? " maxOccurs=\"unbounded\"" : "") + "/>");
  }
  void Class(const ClassSchema& schema) {
    const bool is_free = WritesItself(schema);
    Open("xs:complexType name=\"" + CString(schema.Tag) + '"' + (is_free ? " mixed=\"true\"" : ""));
    if (schema.IsSet) {
      Open("xs:choice minOccurs=\"0\" maxOccurs=\"unbounded\"");
      for (const ClassSchema* element : check::AllClasses())
        if (element != nullptr && schema.Accepts(element->Id))
          Line("<xs:element name=\"" + CString(element->Tag) + "\" type=\"" +
               CString(element->Tag) + "\"/>");
      Close("xs:choice");
    } else if (is_free) {
      Open("xs:choice minOccurs=\"0\" maxOccurs=\"unbounded\"");
      for (const FieldSchema& field : schema.Fields) Value(field, true);
      Close("xs:choice");
    } else {
      Fields(schema.Fields);
    }
    Close("xs:complexType");
  }

  CString m_text;
  std::size_t m_depth = 0;
};

}  // namespace

CString RenderXmlSchema(ClassFamily document) {
  return CSchemaWriter().Write(
      document == ClassFamily::kQen ? check::QenSchema() : check::ZorSchema(), document);
}

}  // namespace qenzor
