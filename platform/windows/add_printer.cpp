// Installs a PostScript printer, so that the tests under Wine can print. The printer's port is the
// file that is printed to.
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

// A sheet of A4 with margins that differ.
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

// The calls take texts that they only read as if they could be changed.
char* given(const char* text) {
    return const_cast<char*>(text);
}

// To where the driver's files are taken from when it is added.
bool write_description() {
    char folder[4 * MAX_PATH] = ""; // Wine wants room for wide letters
    DWORD size = 0;
    if (!GetPrinterDriverDirectoryA(nullptr, given(kEnvironment), 1,
                                    reinterpret_cast<BYTE*>(folder), sizeof folder, &size)) {
        return false;
    }
    std::error_code error; // then the file cannot be written either
    std::filesystem::create_directories(folder, error);
    std::ofstream file(std::string(folder) + "\\" + kDescriptionFile, std::ios::binary);
    file << kDescription;
    return !file.flush().fail();
}

bool add_driver() {
    DRIVER_INFO_3A driver{};
    driver.cVersion = 3;
    driver.pName = given("PostScript");
    driver.pEnvironment = given(kEnvironment);
    driver.pDriverPath = given("wineps.drv");
    driver.pConfigFile = given("wineps.drv");
    driver.pDataFile = given(kDescriptionFile);
    return AddPrinterDriverExA(nullptr, 3, reinterpret_cast<BYTE*>(&driver), APD_COPY_NEW_FILES) !=
           FALSE;
}

bool add_printer() {
    PRINTER_INFO_2A printer{};
    printer.pPrinterName = given(kPrinter);
    printer.pPortName = given("FILE:");
    printer.pDriverName = given("PostScript");
    printer.pPrintProcessor = given("WinPrint");
    printer.pDatatype = given("RAW");
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
