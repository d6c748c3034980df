// Starts the layer and calls the program's WinMain.
#include "frames/accessible.h"
#include "frames/keyboard.h"
#include "platform/whole_file.h"
#include "platform/win32.h"

#include <QApplication>
#include <QByteArray>
#include <QByteArrayList>
#include <QStringList>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <cmath>
#include <csignal>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/sysinfo.h>
#include <unistd.h>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

// A program may be started with closed standard streams. The next files opened would then get their
// descriptors, and the log would be written into the connection to the display, for example.
void open_closed_streams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) == -1 && errno == EBADF) {
            // open() returns the lowest free descriptor, which is this one.
            [[maybe_unused]] const int opened = ::open(platform::kNullDevice, O_RDWR);
        }
    }
}

// The original standard error, for the toolkit's messages: the program redirects stderr to its log
// file, which must not contain them.
int original_stderr = -1;

void write_toolkit_message(QtMsgType, const QMessageLogContext&, const QString& text) {
    // The offscreen platform warns each time a window is raised or the mouse is grabbed.
    if (text.startsWith(QLatin1String("This plugin does not support "))) {
        return;
    }
    const QByteArray line = text.toLocal8Bit() + '\n';
    [[maybe_unused]] const auto written =
        ::write(original_stderr, line.constData(), static_cast<std::size_t>(line.size()));
}

// Populations grow to hundreds of megabytes and shrink again. glibc can return mapped blocks one by
// one, but from its heap only what lies above the topmost live block.
void return_large_memory_at_once() {
#ifdef __GLIBC__
    mallopt(M_MMAP_THRESHOLD, 192 * 1024);
    mallopt(M_TRIM_THRESHOLD, 8 * 1024 * 1024);
#endif
}

// Limits the process to the machine's memory and swap: bred programs may grow without bound. On a
// system that overcommits memory the out-of-memory killer would end this or another process without
// a message; under the limit an allocation fails and the program reports it. The memory use of
// other processes is not considered.
void limit_memory_to_machine() {
#ifndef PELMORA_SANITIZE // sanitizers reserve more address space than the limit
    struct sysinfo machine {};
    rlimit data{};
    if (::sysinfo(&machine) != 0 || ::getrlimit(RLIMIT_DATA, &data) != 0) {
        return;
    }
    const rlim_t available = (rlim_t{machine.totalram} + machine.totalswap) * machine.mem_unit;
    if (available < data.rlim_cur) {
        data.rlim_cur = available;
        ::setrlimit(RLIMIT_DATA, &data);
    }
#endif
}

// A pixel of the program is shown as a square of whole pixels of the screen, so that pictures stay
// sharp. A desktop's factor, or a user's, is rounded as the toolkit rounds the one that it finds.
void scale_by_whole_factors() {
    qputenv("QT_SCALE_FACTOR_ROUNDING_POLICY", "RoundPreferFloor");
    for (const char* name : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS"}) {
        if (!qEnvironmentVariableIsSet(name)) {
            continue;
        }
        QByteArrayList screens = qgetenv(name).split(';'); // "1.5" or "DP-1=1.5;DP-2=2"
        for (QByteArray& screen : screens) {
            const auto number = screen.lastIndexOf('=') + 1;
            const double whole = std::floor(screen.mid(number).toDouble() + 0.25);
            screen = screen.left(number) + QByteArray::number(std::max(1.0, whole));
        }
        qputenv(name, screens.join(';'));
    }
}

} // namespace

int main(int argc, char* argv[]) {
    open_closed_streams();
    return_large_memory_at_once();
    limit_memory_to_machine();
    original_stderr = ::dup(STDERR_FILENO);
    qInstallMessageHandler(write_toolkit_message);
    // A broken pipe and a file size limit make write() fail instead of ending the process.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    scale_by_whole_factors();
    // A compositor finds the name and the icon in the desktop entry of this name.
    QGuiApplication::setDesktopFileName(QStringLiteral("example.pelmora.Pelmora"));
    QApplication application(argc, argv);
    // The toolkit has set the user's locale. Programs read the logs, so numbers have a decimal
    // point in every locale.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setQuitOnLastWindowClosed(false); // the program's loop decides
    platform::install_accessibility();
    platform::KeyFilter keys;
    application.installEventFilter(&keys);
    QByteArray command_line = QApplication::arguments().mid(1).join(' ').toUtf8();
    return WinMain(nullptr, nullptr, command_line.data(), SW_SHOWNORMAL);
}
