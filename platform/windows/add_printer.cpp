// Installs a PostScript printer, so that the tests can print under Wine. The printer's port is the
// output file.
#include "platform/win32.h"

#include <cstdio>
#include <filesystem>
#include <fstream>
#include <string>
#include <system_error>

#include <winspool.h>

namespace {

constexpr char kPrinter[] = "Paper";
constexpr char kEnvironment[] = "Windows x64";
constexpr char kDescriptionFile[] = "pelmora-tests.ppd";

// A4; the horizontal and the vertical margins differ.
constexpr char kDescription[] = R"(*PPD-Adobe: "4.3"
*FormatVersion: "4.3"
*LanguageLevel: "2"
*ColorDevice: True
*DefaultResolution: 300dpi
*OpenUI *PageSize: PickOne
*DefaultPageSize: A4
*PageSize A4: "<< /PageSize [595 842] /ImagingBBox null >> setpagedevice"
*CloseUI: *PageSize
*DefaultImageableArea: A4
*ImageableArea A4: "18 36 577 806"
*DefaultPaperDimension: A4
*PaperDimension A4: "595 842"
)";

// The calls take non-const pointers to strings that they only read.
char* unconst(const char* text) {
    return const_cast<char*>(text);
}

// Writes the PPD into the folder from which AddPrinterDriverExA copies a driver's files.
bool write_description() {
    char folder[4 * MAX_PATH] = ""; // Wine demands room for wide characters
    DWORD size = 0;
    if (!GetPrinterDriverDirectoryA(nullptr, unconst(kEnvironment), 1,
                                    reinterpret_cast<BYTE*>(folder), sizeof folder, &size)) {
        return false;
    }
    std::error_code error; // ignored: opening the file fails then
    std::filesystem::create_directories(folder, error);
    std::ofstream file(std::string(folder) + "\\" + kDescriptionFile, std::ios::binary);
    file << kDescription;
    return !file.flush().fail();
}

bool add_driver() {
    DRIVER_INFO_3A driver{};
    driver.cVersion = 3;
    driver.pName = unconst("PostScript");
    driver.pEnvironment = unconst(kEnvironment);
    driver.pDriverPath = unconst("wineps.drv");
    driver.pConfigFile = unconst("wineps.drv");
    driver.pDataFile = unconst(kDescriptionFile);
    return AddPrinterDriverExA(nullptr, 3, reinterpret_cast<BYTE*>(&driver), APD_COPY_NEW_FILES) !=
           FALSE;
}

bool add_printer() {
    PRINTER_INFO_2A printer{};
    printer.pPrinterName = unconst(kPrinter);
    printer.pPortName = unconst("FILE:");
    printer.pDriverName = unconst("PostScript");
    printer.pPrintProcessor = unconst("WinPrint");
    printer.pDatatype = unconst("RAW");
    HANDLE added = AddPrinterA(nullptr, 2, reinterpret_cast<BYTE*>(&printer));
    return added != nullptr && ClosePrinter(added) && SetDefaultPrinterA(kPrinter);
}

} // namespace

int WINAPI WinMain(HINSTANCE, HINSTANCE, LPSTR, int) {
    if (!write_description() || !add_driver() || !add_printer()) {
        std::fprintf(stderr, "No printer: error %lu\n", GetLastError());
        return 1;
    }
    return 0;
}
