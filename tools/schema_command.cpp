// schema.

#include <array>

#include "commands.h"
#include "failure.h"
#include "qenzor/work/schema.h"
#include "report.h"

namespace tool {

namespace {

struct SchemaRow {
  std::string_view Form;
  std::string_view Of;
  qenzor::CString (*Render)();
};

constexpr std::array<SchemaRow, 3> kSchemas{{
    {"xml", "qen", [] { return qenzor::RenderXmlSchema(qenzor::ClassFamily::kQen); }},
    {"xml", "zor", [] { return qenzor::RenderXmlSchema(qenzor::ClassFamily::kZor); }},
    {"json", "changes", [] { return qenzor::RenderChangesSchema(); }},
}};

}  // namespace

int RunSchema(const Options& options) {
  std::string known;
  for (const SchemaRow& row : kSchemas) {
    if (row.Form != options.SchemaForm) continue;
    if (row.Of == options.SchemaOf) {
      PrintText(row.Render());
      return 0;
    }
    known += (known.empty() ? "" : ", ") + std::string(row.Of);
  }
  throw CWrongUsage("there is no " + options.SchemaForm + " schema of " + options.SchemaOf +
                    ", but of " + known);
}

}  // namespace tool
