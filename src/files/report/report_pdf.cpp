#include "report_pdf.h"

#include "report_layout.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QPageSize>
#include <QPdfWriter>

namespace zr310 {

WriteResult writeReportPdf(const std::filesystem::path& path, const RadioImage& image,
                           Language language, const QDateTime& printedAt) {
    if (qobject_cast<QGuiApplication*>(QCoreApplication::instance()) == nullptr)
        return {false, "the report needs the fonts of a running QGuiApplication"};
    QByteArray pdf;
    {
        QBuffer buffer(&pdf);
        buffer.open(QIODevice::WriteOnly);
        QPdfWriter writer(&buffer);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setPageMargins(QMarginsF(0, 0, 0, 0)); // the layout keeps its own margins
        writer.setTitle(QStringLiteral("ZR-310 PC编程软件"));
        writer.setCreator(QStringLiteral("zr310"));
        if (!printReport(writer, image, language, printedAt))
            return {false, "the report could not be drawn"};
    }
    return writeFileAtomically(path,
                               std::span(reinterpret_cast<const std::uint8_t*>(pdf.constData()),
                                         static_cast<std::size_t>(pdf.size())));
}

} // namespace zr310
