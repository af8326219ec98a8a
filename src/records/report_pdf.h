#pragma once

#include "records/report_builder.h"

#include <QString>

// The report as an A4 PDF to hand to a customer: the workshop's name at the head, each
// verdict's level in its colour, no row cut across two pages, page numbers. Drawn from the
// same outline as the text report. Needs a QGuiApplication (for the fonts).
namespace ReportPdf {

// Writes the PDF to `path`, whole or not at all, readable by its owner only. Gives the
// system's reason of a failure, or an empty text.
QString write(const ReportOutline &outline, const QString &path);

} // namespace ReportPdf
