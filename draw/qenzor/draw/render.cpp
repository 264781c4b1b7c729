#include "qenzor/draw/render.h"

#include <cairo-pdf.h>
#include <cairo-svg.h>

#include <memory>
#include <new>
#include <string>

#include "qenzor/draw/painter_impl.h"

namespace qenzor {

namespace {

constexpr double kPointsPerInch = 72;

/// Where the library that draws writes to; no exception may pass through it.
cairo_status_t WriteTo(void* file, const unsigned char* data, unsigned int size) {
  try {
    static_cast<CFile*>(file)->Write(data, size);
    return CAIRO_STATUS_SUCCESS;
  } catch (const CFileException&) {
    return CAIRO_STATUS_WRITE_ERROR;
  }
}

SurfaceHolder MakeSurface(const CPage& page, PictureFormat format, CFile& file) {
  if (format == PictureFormat::kPng)
    return SurfaceHolder(cairo_image_surface_create(CAIRO_FORMAT_ARGB32,
                                                    static_cast<int>(page.GetPixelWidth()),
                                                    static_cast<int>(page.GetPixelHeight())));
  if (format == PictureFormat::kSvg) {
    SurfaceHolder surface(
        cairo_svg_surface_create_for_stream(&WriteTo, &file, page.GetWidth(), page.GetHeight()));
    cairo_svg_surface_set_document_unit(surface.get(), CAIRO_SVG_UNIT_PX);
    return surface;
  }
  const double points = kPointsPerInch / CPage::kUnitsPerInch;
  SurfaceHolder surface(cairo_pdf_surface_create_for_stream(
      &WriteTo, &file, page.GetWidth() * points, page.GetHeight() * points));
  // The same picture gives the same bytes at any time.
  cairo_pdf_surface_set_metadata(surface.get(), CAIRO_PDF_METADATA_CREATE_DATE,
                                 "2000-01-01T00:00:00Z");
  return surface;
}

double DeviceScale(const CPage& page, PictureFormat format) {
  switch (format) {
    case PictureFormat::kPng:
      return page.GetDpi() / CPage::kUnitsPerInch;
    case PictureFormat::kPdf:
      return kPointsPerInch / CPage::kUnitsPerInch;
    default:
      return 1;
  }
}

Failure Refuse(cairo_status_t status) {
  Failure failure;
  failure.Kind = status == CAIRO_STATUS_NO_MEMORY     ? FailureKind::kOutOfMemory
                 : status == CAIRO_STATUS_WRITE_ERROR ? FailureKind::kCannotWrite
                                                      : FailureKind::kTooLarge;
  failure.Reason = "the picture cannot be drawn: " + std::string(cairo_status_to_string(status));
  return failure;
}

}  // namespace

Result<RenderReport> RenderPicture(const CPicture& picture, PictureFormat format,
                                   const RenderOptions& options, CFile& file,
                                   const WarningSink& warn) {
  const CPage& page = picture.GetPage();
  if (const Result<void> fits = page.CheckSize(); !fits) return fits.GetFailure();
  const SurfaceHolder surface = MakeSurface(page, format, file);
  auto report = std::make_unique<RenderReport>();
  {
    const CairoHolder cairo(cairo_create(surface.get()));
    const double scale = DeviceScale(page, format);
    cairo_scale(cairo.get(), scale, scale);
    CPainter painter(cairo.get(), picture, options, scale, [&](const std::string& what) {
      if (warn) warn(what);
    });
    picture.GetList().ForEach(
        [&](const DrawOrigin& origin, const DrawOp& op) { painter.Draw(origin, op); });
    painter.Finish();
    report->LabelsLeftOut = painter.CountLabelsLeftOut();
    if (const cairo_status_t status = cairo_status(cairo.get()); status != CAIRO_STATUS_SUCCESS)
      return Refuse(status);
  }
  if (format == PictureFormat::kPng) {
    const cairo_status_t status = cairo_surface_write_to_png_stream(surface.get(), &WriteTo, &file);
    if (status != CAIRO_STATUS_SUCCESS) return Refuse(status);
    return report;
  }
  cairo_surface_finish(surface.get());
  if (const cairo_status_t status = cairo_surface_status(surface.get());
      status != CAIRO_STATUS_SUCCESS)
    return Refuse(status);
  return report;
}

}  // namespace qenzor
