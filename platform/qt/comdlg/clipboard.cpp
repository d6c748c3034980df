// The clipboard. The program's data are collected while it has the clipboard open and published
// together when it closes it. Other programs' data are read on request.
#include "base/global_memory.h"
#include "gdi/metafile.h"
#include "user/window.h"

#include <QBuffer>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QPointer>
#include <QStringDecoder>

#include <algorithm>
#include <cstring>
#include <utility>

namespace platform {

namespace {

constexpr QLatin1String kText("text/plain");
// Both MIME types are in use for enhanced metafiles.
constexpr QLatin1String kPicture("image/x-emf");
constexpr QLatin1String kPictureAlias("image/emf");
constexpr QLatin1String kPixels("image/png");

// The data that other programs see: the text, the picture and, for programs that read no metafiles,
// the picture as PNG, which is drawn on request.
class Offer : public QMimeData {
  public:
    Offer(const QByteArray& text, QByteArray picture) : picture_(std::move(picture)) {
        if (!text.isNull()) {
            setData(kText, text);
        }
        if (!picture_.isEmpty()) {
            setData(kPicture, picture_);
            setData(kPictureAlias, picture_);
        }
    }
    QStringList formats() const override {
        return picture_.isEmpty() || draw_metafile(picture_, 1).isNull()
                   ? QMimeData::formats()
                   : QMimeData::formats() << kPixels;
    }

  protected:
    QVariant retrieveData(const QString& format, QMetaType type) const override {
        return format == kPixels && !picture_.isEmpty() ? QVariant(pixels())
                                                        : QMimeData::retrieveData(format, type);
    }

  private:
    QByteArray pixels() const {
        constexpr int kLongerSide = 1024;
        QBuffer png;
        png.open(QIODevice::WriteOnly);
        draw_metafile(picture_, kLongerSide).save(&png, "PNG");
        return png.data();
    }

    QByteArray picture_;
};

struct State {
    bool open = false;
    HWND opener = nullptr;
    bool emptied = false; // since it was opened: closing publishes the new data
    HGLOBAL text = nullptr;
    HENHMETAFILE picture = nullptr;
    HGLOBAL received = nullptr; // a copy of another program's text, from GetClipboardData
    QPointer<QMimeData> published;
};

State& state() {
    static State clipboard;
    return clipboard;
}

void release_received() {
    GlobalFree(std::exchange(state().received, nullptr));
}

void release_set() {
    GlobalFree(std::exchange(state().text, nullptr));
    if (HENHMETAFILE picture = std::exchange(state().picture, nullptr)) {
        DeleteEnhMetaFile(picture);
    }
}

// The text up to its zero or, without a zero, to the end of its block. Null without a block.
QByteArray set_text() {
    const std::span<char> bytes = global_bytes(state().text);
    const auto end = std::find(bytes.begin(), bytes.end(), '\0');
    return bytes.empty() ? QByteArray() : QByteArray(bytes.data(), end - bytes.begin());
}

void publish() {
    QClipboard* clipboard = QGuiApplication::clipboard();
    const QPointer<QMimeData> before = state().published;
    if (state().text == nullptr && state().picture == nullptr) {
        clipboard->clear();
    } else {
        state().published = new Offer(set_text(), metafile_bytes(state().picture));
        clipboard->setMimeData(state().published);
    }
    delete before; // the toolkit does it under X11, not under Wayland
    release_set();
}

constexpr QLatin1String kCharset("charset=");

// The format in which another program offers text; empty for none. Also accepts text formats with a
// character set, which the toolkit does not recognise as text.
QString text_format(const QMimeData& offered) {
    const QStringList formats = offered.formats();
    if (formats.contains(kText)) {
        return kText;
    }
    for (const QString& format : formats) {
        if (format.startsWith(kText, Qt::CaseInsensitive) && format.contains(kCharset)) {
            return format;
        }
    }
    return {};
}

const QMimeData* offered_data() {
    return QGuiApplication::clipboard()->mimeData();
}

bool has_text() {
    if (state().emptied) {
        return state().text != nullptr;
    }
    const QMimeData* offered = offered_data();
    return offered != nullptr && !text_format(*offered).isEmpty();
}

// Null for a null text, which the toolkit returns when the clipboard's owner has ended or hangs.
QByteArray to_utf8(const QString& text) {
    return text.isNull() ? QByteArray() : text.toUtf8();
}

// Another program's text in UTF-8; null for none.
QByteArray offered_text() {
    const QMimeData* offered = offered_data();
    const QString format = offered != nullptr ? text_format(*offered) : QString();
    if (format.isEmpty()) {
        return {};
    }
    if (format == kText) {
        return to_utf8(offered->text());
    }
    QStringDecoder decoder(format.section(kCharset, 1).section(';', 0, 0).toLatin1());
    const QString text = decoder.isValid() ? decoder(offered->data(format)) : QString();
    return to_utf8(text);
}

HGLOBAL received_text() {
    if (state().received == nullptr) {
        const QByteArray text = offered_text();
        const auto size = static_cast<std::size_t>(text.size());
        HGLOBAL memory = text.isNull() ? nullptr : GlobalAlloc(GMEM_MOVEABLE, size + 1);
        if (memory != nullptr) {
            std::memcpy(global_bytes(memory).data(), text.constData(), size + 1);
        }
        state().received = memory;
    }
    return state().received;
}

// Assigns a handle and releases the old one, unless both are the same.
template <typename Handle, typename Release>
void replace(Handle& place, Handle handle, Release release) {
    if (place != nullptr && place != handle) {
        release(place);
    }
    place = handle;
}

// False, with the last error set, when the program does not have the clipboard open.
bool require_open() {
    if (!state().open) {
        SetLastError(ERROR_CLIPBOARD_NOT_OPEN);
    }
    return state().open;
}

} // namespace

} // namespace platform

using namespace platform;

BOOL OpenClipboard(HWND owner) {
    if (owner != nullptr && window_of(owner) == nullptr) {
        SetLastError(ERROR_INVALID_WINDOW_HANDLE);
        return FALSE;
    }
    if (state().open && state().opener != owner) {
        SetLastError(ERROR_ACCESS_DENIED);
        return FALSE;
    }
    state().open = true;
    state().opener = owner;
    return TRUE;
}

BOOL CloseClipboard() {
    if (!require_open()) {
        return FALSE;
    }
    state().open = false;
    release_received();
    if (std::exchange(state().emptied, false)) {
        publish();
    }
    return TRUE;
}

BOOL EmptyClipboard() {
    if (!require_open()) {
        return FALSE;
    }
    release_received();
    release_set();
    state().emptied = true;
    return TRUE;
}

BOOL IsClipboardFormatAvailable(UINT format) {
    return format == CF_TEXT && has_text();
}

HANDLE GetClipboardData(UINT format) {
    if (!require_open() || format != CF_TEXT) {
        return nullptr;
    }
    return state().emptied ? state().text : received_text();
}

HANDLE SetClipboardData(UINT format, HANDLE data) {
    if (!require_open()) {
        return nullptr;
    }
    if (!state().emptied) {
        SetLastError(ERROR_CLIPBOARD_NOT_OPEN);
        return nullptr;
    }
    if (format == CF_TEXT && !global_bytes(data).empty()) {
        replace(state().text, data, GlobalFree);
    } else if (format == CF_ENHMETAFILE &&
               !metafile_bytes(static_cast<HENHMETAFILE>(data)).isEmpty()) {
        replace(state().picture, static_cast<HENHMETAFILE>(data), DeleteEnhMetaFile);
    } else {
        SetLastError(ERROR_INVALID_PARAMETER);
        return nullptr;
    }
    return data;
}
