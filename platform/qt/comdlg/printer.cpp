// Printing on the printer chosen in the print dialog.
#include "comdlg/print_dialog.h"
#include "gdi/device_context.h"
#include "platform/whole_file.h"

#include <QDir>
#include <QPainter>
#include <QPolygon>
#include <QPrinter>
#include <QTemporaryFile>

#include <algorithm>
#include <chrono>
#include <memory>
#include <thread>
#include <utility>

namespace platform {

namespace {

// A print job. Connected lines are drawn as one polyline, so that they are joined.
class PrinterOutput final : public DeviceOutput {
  public:
    explicit PrinterOutput(std::unique_ptr<QPrinter> printer) : printer_(std::move(printer)) {
        lines_.append(QPoint(0, 0));
    }
    ~PrinterOutput() override {
        if (painter_.isActive()) { // EndDoc was not called
            abandon();
        }
    }

    void move_to(int x, int y) override {
        if (lines_.last() != QPoint(x, y)) {
            draw_lines();
            lines_ = QPolygon({QPoint(x, y)});
        }
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
    bool open_file();
    bool complete_file();
    void abandon();

    std::unique_ptr<QPrinter> printer_;
    QPainter painter_;
    QPen pen_{Qt::black, 0}; // the stock pen
    QPolygon lines_;         // begins at the current point
    ABORTPROC abort_ = nullptr;
    std::unique_ptr<WholeFile> file_; // the output file; null: a printer
    QTemporaryFile part_{QDir::tempPath() + "/printing-XXXXXX.pdf"}; // the output until EndDoc
    bool started_ = false;
    bool in_page_ = false;
    bool next_page_ = false; // false: the first page, which needs no newPage()
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

// Makes the toolkit print to a temporary file, which complete_file() copies. The toolkit would
// write the chosen file during the job, block on a pipe without a reader, and not report write
// errors.
bool PrinterOutput::open_file() {
    const QString path = printer_->outputFileName();
    if (path.isEmpty()) {
        return true;
    }
    file_ = std::make_unique<WholeFile>(QFile::encodeName(path).toStdString());
    if (file_->stream() == nullptr || !part_.open()) {
        return false;
    }
    printer_->setOutputFileName(part_.fileName());
    return true;
}

// A document without its end mark is truncated.
bool PrinterOutput::complete_file() {
    if (file_ == nullptr) {
        return true;
    }
    constexpr qsizetype kTail = 16;
    QFile part(part_.fileName()); // reopened, as the toolkit may have replaced the file
    const QByteArray document = part.open(QIODevice::ReadOnly) ? part.readAll() : QByteArray();
    if (!document.right(kTail).contains("%%EOF")) {
        return false; // before the target is overwritten
    }
    std::fwrite(document.constData(), 1, static_cast<std::size_t>(document.size()),
                file_->stream()); // commit() reports errors
    return file_->commit() == 0;
}

void PrinterOutput::abandon() {
    printer_->abort();
    painter_.end();
    file_ = nullptr;
}

bool PrinterOutput::start_document(const QString& name) {
    if (std::exchange(started_, true)) {
        return false; // one document per device context
    }
    printer_->setDocName(name);
    if (!open_file() || !painter_.begin(printer_.get())) {
        file_ = nullptr;
        return false;
    }
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
        abandon();
        return false;
    }
    return open;
}

bool PrinterOutput::end_document() {
    const bool ended = painter_.isActive() && painter_.end() && complete_file();
    file_ = nullptr;
    return ended;
}

PrinterOutput* printer_of(HDC handle) {
    const DeviceContext* device = device_context(handle);
    return device != nullptr ? dynamic_cast<PrinterOutput*>(device->output.get()) : nullptr;
}

// The printing calls return a number above 0 for success.
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
    if (!choose_printer(*printer, print->hwndOwner) || !printer->isValid()) {
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
