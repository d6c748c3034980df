// Icons and cursors.
#include "resources/resources.h"

#include <QCursor>
#include <QGuiApplication>
#include <QImage>
#include <QPixmap>

#include <map>
#include <utility>

namespace platform {

namespace {

QImage picture_image(const IconPicture& picture) {
    const std::vector<std::uint32_t> pixels = read_icon_pixels(picture);
    if (pixels.empty()) {
        return QImage::fromData(picture.data.data(), static_cast<int>(picture.data.size()), "PNG");
    }
    return QImage(reinterpret_cast<const uchar*>(pixels.data()), picture.width, picture.height,
                  QImage::Format_ARGB32)
        .copy();
}

HCURSOR cursor_handle(Qt::CursorShape shape) {
    // The handle is the shape + 1; only SetCursor() interprets it.
    return reinterpret_cast<HCURSOR>(static_cast<std::uintptr_t>(shape) + 1);
}

} // namespace

const QIcon* icon_of(HICON handle) {
    return reinterpret_cast<const QIcon*>(handle);
}

const QIcon* load_icon(std::uint16_t id) {
    // Never destroyed: icons must be released before the toolkit, and static objects are released
    // after it.
    static auto& loaded = *new std::map<std::uint16_t, QIcon>;
    const auto known = loaded.find(id);
    if (known != loaded.end()) {
        return &known->second;
    }
    QIcon icon;
    for (const IconPicture& picture : read_icon(program_resources(), id)) {
        const QImage image = picture_image(picture);
        if (!image.isNull()) {
            icon.addPixmap(QPixmap::fromImage(image));
        }
    }
    return icon.isNull() ? nullptr : &loaded.emplace(id, icon).first->second;
}

} // namespace platform

using namespace platform;

HICON LoadIconA(HINSTANCE, LPCSTR name) {
    return reinterpret_cast<HICON>(const_cast<QIcon*>(load_icon(resource_id(name))));
}

HCURSOR LoadCursorA(HINSTANCE, LPCSTR name) {
    return cursor_handle(name == IDC_WAIT ? Qt::WaitCursor : Qt::ArrowCursor);
}

HCURSOR SetCursor(HCURSOR cursor) {
    static HCURSOR current = cursor_handle(Qt::ArrowCursor);
    const HCURSOR wait = cursor_handle(Qt::WaitCursor);
    if (cursor != current) {
        if (cursor == wait) {
            QGuiApplication::setOverrideCursor(Qt::WaitCursor);
        } else if (current == wait) {
            QGuiApplication::restoreOverrideCursor();
        }
    }
    return std::exchange(current, cursor);
}
