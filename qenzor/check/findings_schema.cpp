#include "qenzor/check/findings_schema.h"

#include "qenzor/check/finding.h"

namespace qenzor {

namespace {

constexpr std::string_view kFront = R"({
  "$schema": "https://json-schema.org/draft/2020-12/schema",
  "title": "What qenzor check --json prints",
  "description": "The files that were checked, in order, each with what was found in it.",
  "type": "array",
  "items": {"$ref": "#/$defs/file"},
  "$defs": {
    "file": {
      "type": "object",
      "properties": {
        "file": {"type": "string", "description": "as the command line names it"},
        "kind": {"enum": ["Qen", "Zor", ""], "description": "empty where it is not known"},
        "findings": {"type": "array", "items": {"$ref": "#/$defs/finding"}},
        "more": {
          "description": "how many findings of a kind are not told",
          "type": "array",
          "items": {
            "type": "object",
            "properties": {
              "code": {"$ref": "#/$defs/code"},
              "name": {"type": "string"},
              "count": {"type": "integer", "minimum": 1}
            },
            "required": ["code", "name", "count"],
            "additionalProperties": false
          }
        }
      },
      "required": ["file", "kind", "findings", "more"],
      "additionalProperties": false
    },
    "code": {"type": "string", "pattern": "^Q[0-9]{4}$"},
    "number": {"type": "integer", "minimum": 0},
    "finding": {
      "type": "object",
      "properties": {
        "code": {"$ref": "#/$defs/code"},
        "name": {"type": "string"},
        "severity": {"enum": ["note", "warning", "error"]},
        "offset": {"$ref": "#/$defs/number", "description": "in bytes, in a binary document"},
        "line": {"type": "integer", "minimum": 1, "description": "of XML"},
        "column": {"type": "integer", "minimum": 1, "description": "in bytes"},
        "path": {"type": "string", "description": "of chunks or elements, positions from 0"},
        "reason": {"type": "string"},
        "segment": {"$ref": "#/$defs/number", "description": "the number of the segment"},
        "layer": {"$ref": "#/$defs/number", "description": "the number of the layer"},
        "zid": {"$ref": "#/$defs/number", "description": "the z-id"},
        "index": {"$ref": "#/$defs/number", "description": "position in its set, from 0"}
      },
      "required": ["code", "name", "severity", "path", "reason"],
      "additionalProperties": false,
      "allOf": [
        {"oneOf": [{"required": ["offset"]}, {"required": ["line", "column"]}]},
        {"$ref": "#/$defs/kind"}
      ]
    },
    "kind": {
      "oneOf": [)";

constexpr std::string_view kBack = R"(
      ]
    }
  }
}
)";

/// A text of the table as JSON; it holds nothing below a space.
CString Json(std::string_view text) {
  CString json = "\"";
  for (const char c : text) {
    if (c == '"' || c == '\\') json += '\\';
    json += c;
  }
  return json + '"';
}

}  // namespace

CString FindingsSchema() {
  CString schema(kFront);
  const char* separator = "\n";
  for (const FindingKind& kind : FindingKinds()) {
    schema += separator;
    schema += "        {\n          \"description\": " + Json(kind.Meaning) +
              ",\n          \"properties\": {\n            \"code\": {\"const\": " +
              Json(CodeText(kind)) + "},\n            \"name\": {\"const\": " + Json(kind.Name) +
              "},\n            \"severity\": {\"const\": " + Json(SeverityName(kind.Severity)) +
              "}\n          }\n        }";
    separator = ",\n";
  }
  return schema.append(kBack);
}

}  // namespace qenzor
