// Printers: the desktop's print dialog, and pages drawn on what it chose.
#include "platform/qt/device_context.h"
#include "platform/qt/toolkit_dialog.h"
#include "platform/qt/window.h"

#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QPolygon>
#include <QPrintDialog>
#include <QPrinter>
#include <QTemporaryFile>

#include <memory>
#include <thread>

namespace platform {

namespace {

// A job on a printer. Lines that follow each other are drawn as one polyline, so that they join.
class PrinterOutput final : public DeviceOutput {
  public:
    explicit PrinterOutput(std::unique_ptr<QPrinter> printer) : printer_(std::move(printer)) {
        lines_.append(QPoint(0, 0));
    }
    ~PrinterOutput() override {
        if (painter_.isActive()) { // the document was not ended: nobody wants it
            printer_->abort();
            painter_.end();
            remove_part();
        }
    }

    void move_to(int x, int y) override {
        draw_lines();
        lines_ = QPolygon({QPoint(x, y)});
    }
    void line_to(int x, int y) override {
        constexpr qsizetype kMostLines = 1000;
        lines_.append(QPoint(x, y));
        if (lines_.size() > kMostLines) {
            draw_lines();
        }
    }
    void select_pen(const GdiObject* object) override {
        const auto* pen = static_cast<const Pen*>(object);
        draw_lines();
        pen_ = QPen(QColor::fromRgb(pen->color), pen->width, Qt::SolidLine, Qt::RoundCap,
                    Qt::RoundJoin);
    }
    int set_map_mode(int mode) override { return mode == MM_TEXT ? MM_TEXT : 0; }
    int caps(int index) const override;

    void set_abort(ABORTPROC procedure) { abort_ = procedure; }
    bool start_document(const QString& name);
    bool start_page();
    bool end_page(HDC device);
    bool end_document();

  private:
    void draw_lines();
    void choose_part();
    bool install_part();
    void remove_part();

    std::unique_ptr<QPrinter> printer_;
    QPainter painter_;
    QPen pen_;
    QPolygon lines_; // begins at the current point
    ABORTPROC abort_ = nullptr;
    QString file_; // printed to; empty: a printer
    QString part_; // what stands for it until it is complete; empty: itself
    bool in_page_ = false;
    bool next_page_ = false; // the first begins with the document
};

int PrinterOutput::caps(int index) const {
    const QRect paper = printer_->paperRect(QPrinter::DevicePixel).toRect();
    const QRect page = printer_->pageRect(QPrinter::DevicePixel).toRect();
    switch (index) {
    case HORZRES:
        return page.width();
    case VERTRES:
        return page.height();
    case PHYSICALWIDTH:
        return paper.width();
    case PHYSICALHEIGHT:
        return paper.height();
    case PHYSICALOFFSETX:
        return page.left() - paper.left();
    case PHYSICALOFFSETY:
        return page.top() - paper.top();
    default:
        return 0;
    }
}

void PrinterOutput::draw_lines() {
    const bool dot = lines_.size() == 2 && lines_.first() == lines_.last();
    if (in_page_ && lines_.size() > 1 && (!dot || pen_.width() > 1)) {
        painter_.setPen(pen_);
        painter_.drawPolyline(lines_);
    }
    lines_ = QPolygon({lines_.last()});
}

// An old file goes only when the new one is complete, where the folder lets us.
void PrinterOutput::choose_part() {
    file_ = printer_->outputFileName();
    const QFileInfo old(file_);
    if (file_.isEmpty() || (old.exists() && !old.isFile())) {
        return;
    }
    const QString target = old.isSymLink() ? old.symLinkTarget() : file_;
    QTemporaryFile part(QFileInfo(target).path() + "/.printing-XXXXXX.pdf");
    if ((!old.exists() || old.isWritable()) && part.open()) {
        part.setAutoRemove(false);
        file_ = target;
        part_ = part.fileName();
        const auto mode = old.exists() ? QFile::permissions(target)
                                       : QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup |
                                             QFile::ReadOther;
        part.setPermissions(mode);
        printer_->setOutputFileName(part_);
    }
}

void PrinterOutput::remove_part() {
    if (!part_.isEmpty()) {
        QFile::remove(part_);
    }
}

// The toolkit does not say whether it could write everything; a document that did not reach its end
// mark was cut.
bool PrinterOutput::install_part() {
    if (part_.isEmpty()) {
        return true;
    }
    QFile part(part_);
    constexpr qint64 kTail = 16;
    const bool complete = part.open(QIODevice::ReadOnly) &&
                          part.seek(std::max<qint64>(0, part.size() - kTail)) &&
                          part.readAll().contains("%%EOF");
    part.close();
    const bool installed = complete && std::rename(QFile::encodeName(part_).constData(),
                                                   QFile::encodeName(file_).constData()) == 0;
    if (!installed) {
        remove_part();
    }
    return installed;
}

bool PrinterOutput::start_document(const QString& name) {
    if (painter_.isActive()) {
        return false;
    }
    printer_->setDocName(name);
    choose_part();
    if (!painter_.begin(printer_.get())) {
        remove_part();
        return false;
    }
    next_page_ = false;
    return true;
}

bool PrinterOutput::start_page() {
    if (!painter_.isActive() || in_page_ || (next_page_ && !printer_->newPage())) {
        return false;
    }
    in_page_ = next_page_ = true;
    return true;
}

bool PrinterOutput::end_page(HDC device) {
    draw_lines();
    const bool open = std::exchange(in_page_, false);
    if (open && abort_ != nullptr && abort_(device, 0) == FALSE) {
        printer_->abort();
        painter_.end();
        remove_part();
        return false;
    }
    return open;
}

bool PrinterOutput::end_document() {
    return painter_.isActive() && painter_.end() && install_part();
}

PrinterOutput* printer_of(HDC handle) {
    const DeviceContext* device = device_context(handle);
    return device != nullptr ? dynamic_cast<PrinterOutput*>(device->output.get()) : nullptr;
}

// The calls of a job answer with a number above 0 for success.
int answer(bool success) {
    constexpr int kError = -1; // SP_ERROR
    return success ? 1 : kError;
}

} // namespace

} // namespace platform

using namespace platform;

BOOL PrintDlgA(PRINTDLGA* print) {
    auto printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    printer->setCopyCount(print->nCopies);
    const Window* owner = window_of(print->hwndOwner);
    const QPointer<QPrintDialog> dialog =
        new QPrintDialog(printer.get(), owner != nullptr ? owner->widget() : nullptr);
    dialog->setOption(QAbstractPrintDialog::PrintPageRange, print->nMaxPage > print->nMinPage);
    dialog->setOption(QAbstractPrintDialog::PrintSelection, false);
    const bool chosen = run_toolkit_dialog(dialog.data(), print->hwndOwner);
    delete dialog;
    if (!chosen || !printer->isValid()) {
        return FALSE;
    }
    if ((print->Flags & PD_RETURNDC) != 0) {
        auto device = std::make_unique<DeviceContext>();
        device->output = std::make_unique<PrinterOutput>(std::move(printer));
        print->hDC = handle_of(device.release());
    }
    return TRUE;
}

int SetAbortProc(HDC handle, ABORTPROC procedure) {
    PrinterOutput* printer = printer_of(handle);
    if (printer == nullptr) {
        return answer(false);
    }
    printer->set_abort(procedure);
    return answer(true);
}

int StartDocA(HDC handle, const DOCINFOA* document) {
    PrinterOutput* printer = printer_of(handle);
    return answer(printer != nullptr &&
                  printer->start_document(QString::fromUtf8(document->lpszDocName)));
}

int EndDoc(HDC handle) {
    PrinterOutput* printer = printer_of(handle);
    return answer(printer != nullptr && printer->end_document());
}

int StartPage(HDC handle) {
    PrinterOutput* printer = printer_of(handle);
    return answer(printer != nullptr && printer->start_page());
}

int EndPage(HDC handle) {
    PrinterOutput* printer = printer_of(handle);
    return answer(printer != nullptr && printer->end_page(handle));
}

void Sleep(DWORD milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}
