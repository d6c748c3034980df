// Starts the layer and then the program.
#include "frames/keyboard.h"
#include "platform/whole_file.h"
#include "platform/win32.h"

#include <QApplication>
#include <QByteArray>
#include <QStringList>

#include <cerrno>
#include <clocale>
#include <csignal>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/sysinfo.h>
#include <unistd.h>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

// A program may be started with standard streams that are closed. Their descriptors would then go
// to what is opened first, the connection to the display say, and the log would be written into
// that.
void open_closed_streams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(stream, F_GETFD) == -1 && errno == EBADF) {
            // Gets the lowest free descriptor, which is this one. Without a null device it stays
            // closed.
            [[maybe_unused]] const int opened = ::open(platform::kNullDevice, O_RDWR);
        }
    }
}

// The toolkit's own remarks go where the program's error stream went at start. The program sends
// that stream to a log file of its own, in which they have no place.
int remarks = -1;

void write_remark(QtMsgType, const QMessageLogContext&, const QString& text) {
    // Where there are no windows on a screen nothing can be raised or held; for each try, the
    // toolkit's own included, it says so.
    if (text.startsWith(QLatin1String("This plugin does not support "))) {
        return;
    }
    const QByteArray line = text.toLocal8Bit() + '\n';
    [[maybe_unused]] const auto written =
        ::write(remarks, line.constData(), static_cast<std::size_t>(line.size()));
}

// Populations grow to hundreds of megabytes and shrink again. What glibc takes from the system
// piece by piece it can give back; in a heap one node that lives on would hold all that lies below
// it.
void return_large_memory_at_once() {
#ifdef __GLIBC__
    mallopt(M_MMAP_THRESHOLD, 192 * 1024);
    mallopt(M_TRIM_THRESHOLD, 8 * 1024 * 1024);
#endif
}

// Bred programs may grow without end. Where the system promises more memory than there is, it would
// kill the program, or another one, when that comes out; so what the whole machine has is the
// limit, and the program is told, and says what ended it. (Other programs' shares cannot be known.)
void ask_for_no_more_memory_than_there_is() {
#ifndef PELMORA_SANITIZE // they take more addresses than there is memory
    struct sysinfo machine {};
    rlimit data{};
    if (::sysinfo(&machine) != 0 || ::getrlimit(RLIMIT_DATA, &data) != 0) {
        return;
    }
    const rlim_t there = (rlim_t{machine.totalram} + machine.totalswap) * machine.mem_unit;
    if (there < data.rlim_cur) {
        data.rlim_cur = there;
        ::setrlimit(RLIMIT_DATA, &data);
    }
#endif
}

} // namespace

int main(int argc, char* argv[]) {
    open_closed_streams();
    return_large_memory_at_once();
    ask_for_no_more_memory_than_there_is();
    remarks = ::dup(STDERR_FILENO);
    qInstallMessageHandler(write_remark);
    // A pipe whose reader is gone and a limit on the size of files are errors of the write, not the
    // end of the program.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    // A client pixel is a pixel of the screen, as the pictures are made pixel by pixel; text and
    // menus still follow the desktop's font size.
    if (!qEnvironmentVariableIsSet("QT_ENABLE_HIGHDPI_SCALING")) {
        qputenv("QT_ENABLE_HIGHDPI_SCALING", "0");
    }
    QApplication application(argc, argv);
    // The toolkit has taken over the user's locale. The program's logs are read by programs, too:
    // their numbers have a point everywhere.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setQuitOnLastWindowClosed(false); // the program's loop decides
    platform::KeyFilter keys;
    application.installEventFilter(&keys);
    QByteArray command_line = QApplication::arguments().mid(1).join(' ').toUtf8();
    return WinMain(nullptr, nullptr, command_line.data(), SW_SHOWNORMAL);
}
