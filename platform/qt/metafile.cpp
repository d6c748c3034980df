#include "platform/qt/metafile.h"

#include "platform/qt/metafile_recorder.h"

#include <QFile>
#include <QFileInfo>
#include <QSaveFile>

#include <algorithm>
#include <memory>
#include <new>
#include <vector>

#include <fcntl.h>

namespace platform {

MapScale map_scale(int mode, const ReferenceDevice& device) {
    switch (mode) {
    case MM_LOMETRIC:
        return {10.0, -10.0};
    case MM_HIMETRIC:
        return {1.0, -1.0};
    case MM_LOENGLISH:
        return {25.4, -25.4};
    case MM_HIENGLISH:
        return {2.54, -2.54};
    default:
        return {device.millimeters_x * 100.0 / device.pixels_x,
                device.millimeters_y * 100.0 / device.pixels_y};
    }
}

namespace {

struct Metafile {
    QByteArray bytes;
};

// Closed metafiles, so that a handle that is none (any more) is recognised.
std::vector<std::unique_ptr<Metafile>>& metafiles() {
    static auto& closed = *new std::vector<std::unique_ptr<Metafile>>;
    return closed;
}

auto find_metafile(HENHMETAFILE handle) {
    return std::find_if(metafiles().begin(), metafiles().end(),
                        [handle](const std::unique_ptr<Metafile>& metafile) {
                            return reinterpret_cast<HENHMETAFILE>(metafile.get()) == handle;
                        });
}

// A device or a pipe; a pipe that nobody reads is refused instead of waited for.
std::unique_ptr<QFileDevice> open_special(const QString& path) {
    const int descriptor =
        ::open(QFile::encodeName(path).constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    auto file = std::make_unique<QFile>();
    if (descriptor == -1 ||
        !file->open(descriptor, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle)) {
        return nullptr;
    }
    ::fcntl(descriptor, F_SETFL, O_WRONLY);
    return file;
}

// Opens the file that a metafile is to become. It appears whole, in place of the old one, when it
// is complete; in a folder that cannot be written it is written in place.
std::unique_ptr<QFileDevice> open_target(const QString& path) {
    const QFileInfo old(path);
    if (old.exists() && !old.isFile()) {
        return open_special(path);
    }
    auto file = std::make_unique<QSaveFile>(path);
    file->setDirectWriteFallback(true);
    return file->open(QIODevice::WriteOnly) ? std::move(file) : nullptr;
}

} // namespace

QByteArray metafile_bytes(HENHMETAFILE handle) {
    const auto found = find_metafile(handle);
    return found != metafiles().end() ? (*found)->bytes : QByteArray();
}

} // namespace platform

using namespace platform;

HDC CreateEnhMetaFileA(HDC, LPCSTR path, const RECT* frame, LPCSTR description) {
    std::unique_ptr<QFileDevice> file;
    if (path != nullptr) {
        file = open_target(QString::fromUtf8(path));
        if (file == nullptr) {
            SetLastError(ERROR_PATH_NOT_FOUND);
            return nullptr;
        }
    }
    auto device = std::make_unique<DeviceContext>();
    device->output = std::make_unique<MetafileRecorder>(frame, description, std::move(file));
    return handle_of(device.release());
}

HENHMETAFILE CloseEnhMetaFile(HDC handle) {
    DeviceContext* device = device_context(handle);
    auto* recorder =
        device != nullptr ? dynamic_cast<MetafileRecorder*>(device->output.get()) : nullptr;
    if (recorder == nullptr) {
        SetLastError(ERROR_INVALID_HANDLE);
        return nullptr;
    }
    QByteArray bytes = recorder->close();
    delete device;
    if (bytes.isEmpty()) {
        SetLastError(ERROR_WRITE_FAULT);
        return nullptr;
    }
    metafiles().push_back(std::make_unique<Metafile>(Metafile{std::move(bytes)}));
    return reinterpret_cast<HENHMETAFILE>(metafiles().back().get());
}

BOOL DeleteEnhMetaFile(HENHMETAFILE handle) {
    const auto found = find_metafile(handle);
    if (found == metafiles().end()) {
        SetLastError(ERROR_INVALID_HANDLE);
        return FALSE;
    }
    metafiles().erase(found);
    return TRUE;
}
