// render.

#include "draw/render.h"

#include <algorithm>
#include <cctype>
#include <iostream>
#include <memory>
#include <string>

#include "documents.h"
#include "output.h"
#include "progress.h"
#include "qenzor/draw/list_json.h"
#include "qenzor/draw/picture.h"
#include "qenzor/draw/render.h"
#include "report.h"

namespace tool {

namespace {

/// What a picture is made of; keeps the documents.
struct Content {
  std::unique_ptr<qenzor::CQen> Map;
  std::unique_ptr<qenzor::CZor> Drawing;
  std::unique_ptr<qenzor::CPicture> Picture;
};

void Warn(const std::string& what) { std::cerr << Complaint("warning: " + what); }

Content PlanPicture(const Options& options, const std::string& map, const std::string& drawing) {
  Content content;
  content.Map = ReadAny<QenKind>(map, "map project");
  if (!drawing.empty()) content.Drawing = ReadAny<ZorKind>(drawing, "drawing");
  qenzor::PictureContent what;
  what.Map = content.Map.get();
  what.Drawing = content.Drawing.get();
  what.Frame = options.Frame;
  what.Which = options.Filters;
  what.DefaultStyle = options.Picture.DefaultStyle;
  what.Page.Denominator = options.Picture.Scale;
  if (options.Picture.Size.has_value())
    what.Page.Size = {options.Picture.Size->first, options.Picture.Size->second};
  what.Page.Dpi = options.Picture.Dpi;
  what.Page.How =
      options.Picture.IsMercator ? qenzor::Projection::kMercator : qenzor::Projection::kFlat;
  auto picture = qenzor::CPicture::Plan(what, &Warn);
  if (!picture) throw CFailure(map, picture.GetFailure().Describe());
  content.Picture = picture.Take();
  if (!content.Picture->HasObjects()) TellNoMatch();
  return content;
}

void PrintList(const qenzor::CDrawList& list) {
  constexpr std::size_t kBlock = 65536;
  std::string lines;
  list.ForEach([&](const qenzor::DrawOrigin& origin, const qenzor::DrawOp& op) {
    qenzor::AppendJsonLine(lines, origin, op);
    if (lines.size() < kBlock) return;
    PrintText(lines);
    lines.clear();
  });
  PrintText(lines);
}

qenzor::RenderOptions MakeRenderOptions(const PictureOptions& asked) {
  qenzor::RenderOptions options;
  options.Background = asked.Background;
  options.AllLabels = asked.AllLabels;
  options.Images = asked.Images;
  options.Fonts = asked.Fonts;
  return options;
}

void WritePicture(const Options& options, const qenzor::CPicture& picture) {
  const std::string& out = options.Files.back();
  // Before the target is touched.
  if (const auto fits = picture.GetPage().CheckSize(); !fits)
    throw CFailure(out, fits.GetFailure().Describe());
  std::size_t left_out = 0;
  WriteOutput(out, [&](qenzor::CFile& file) {
    const auto report = qenzor::RenderPicture(picture, *FindFormat(out),
                                              MakeRenderOptions(options.Picture), file, &Warn);
    if (!report) return qenzor::Result<void>(report.GetFailure());
    left_out = report->LabelsLeftOut;
    return qenzor::Result<void>();
  });
  if (left_out > 0 && !options.Quiet)
    std::cerr << "qenzor: " << left_out
              << " labels would cover others and are left out (--all-labels draws them)\n";
}

}  // namespace

std::optional<qenzor::PictureFormat> FindFormat(const std::string& path) {
  std::string extension = path.substr(std::min(path.rfind('.'), path.size()));
  std::transform(extension.begin(), extension.end(), extension.begin(),
                 [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
  if (extension == ".svg") return qenzor::PictureFormat::kSvg;
  if (extension == ".png") return qenzor::PictureFormat::kPng;
  if (extension == ".pdf") return qenzor::PictureFormat::kPdf;
  return std::nullopt;
}

int RunRender(const Options& options) {
  const bool list = options.Picture.List;
  const std::size_t names = options.Files.size();
  // The last name is the picture's, except with --list.
  const std::string drawing = names >= (list ? 2U : 3U) ? options.Files[1] : "";
  CProgress progress(options.Quiet);
  progress.Stage("reading");
  const Content content = PlanPicture(options, options.Files[0], drawing);
  progress.Stage("drawing");
  if (list)
    PrintList(content.Picture->GetList());
  else
    WritePicture(options, *content.Picture);
  return 0;
}

}  // namespace tool
