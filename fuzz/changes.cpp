// Change documents: what is understood says the same when it is written, and what can be carried
// out is found by comparing.

#include <string>

#include "qenzor/qen/qen.h"
#include "qenzor/storable.h"
#include "qenzor/work/apply.h"
#include "qenzor/work/change_document.h"
#include "qenzor/work/diff.h"
#include "qenzor/zor/zor.h"
#include "support/documents.h"

namespace {

using qenzor::ChangeDocument;

constexpr std::string_view kMap =
    R"({"format":"qenzor-changes","version":1,"document":"qen","changes":[
{"op":"set","field":"QenMapData","to":{"MeshSegmentSet":[
 {"MeshSegmentNo":1,"LayerSet":[{"LayerNo":2,"ZIdObjSet":[{"ZId":"7","ObjSet":[
  {"class":"LineObj","Pt":[[0,0],[1,1]]},{"class":"CmbLblObj","Text":"A"},{"class":"RasMMObj"},
  {"class":"LineObj","Pt":[[0,0],[1,1]],"AddedObjInfoSet":[{"class":"UrlInfo","Text":"a"}]}]}]},
 {"LayerNo":2}]},{"MeshSegmentNo":3}]}}]})";
constexpr std::string_view kDrawing =
    R"({"format":"qenzor-changes","version":1,"document":"zor","changes":[
{"op":"set","field":"DrawAtterSet","to":[{"ZId":7,"DrawInfoIdxSet":{"DrawInfoIdx":[0,1]}},{"ZId":8}]},
{"op":"set","field":"DrawInfoSet","to":[{"class":"LineDrawInfo","ScData":[{"DenomMax":9}]},
 {"class":"CmbLblDrawInfo"}]},
{"op":"set","field":"MarkDataSet","to":[{"MarkElem":[{"Pt":[[1,2]]}]}]}]})";

template <class Document>
ChangeDocument ChangesOf(const Document& before, const Document& after, qenzor::ClassFamily kind) {
  ChangeDocument changes;
  changes.Document = kind;
  fuzz::Require(static_cast<bool>(Diff(before, after, [&](const qenzor::Change& change) {
    changes.Changes.push_back(change);
    return true;
  })));
  return changes;
}

template <class Document>
void CarryOut(const ChangeDocument& changes, std::string_view base) {
  Document before;
  const auto made = Apply(before, *qenzor::ParseChanges(base));
  fuzz::Require(made && made->Misfits.empty());
  const std::unique_ptr<Document> after(before.Clone());
  const auto report = Apply(*after, changes);
  if (!report || FindUnstorable(*after).has_value()) return;
  fuzz::Require(report->Applied <= changes.Changes.size());
  ChangeDocument found = ChangesOf(before, *after, changes.Document);
  const std::unique_ptr<Document> again(before.Clone());
  const auto repeated = Apply(*again, found);
  fuzz::Require(repeated && repeated->Misfits.empty());
  fuzz::Require(ChangesOf(*again, *after, changes.Document).Changes.empty());
  fuzz::Require(static_cast<bool>(ReverseChanges(found)));
  const auto reversed = Apply(*again, found);
  fuzz::Require(reversed && reversed->Misfits.empty());
  fuzz::Require(ChangesOf(*again, before, changes.Document).Changes.empty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::vector<char> text(data, data + size);
  const auto changes = qenzor::ParseChanges({text.data(), text.size()});
  if (!changes) return 0;
  const auto again = qenzor::ParseChanges(RenderChanges(*changes));
  fuzz::Require(again && again->Changes == changes->Changes);
  for (const qenzor::Change& change : changes->Changes)
    fuzz::Require(!DescribeChange(change).empty());
  if (changes->Document == qenzor::ClassFamily::kQen)
    CarryOut<qenzor::CQen>(*changes, kMap);
  else
    CarryOut<qenzor::CZor>(*changes, kDrawing);
  return 0;
}
