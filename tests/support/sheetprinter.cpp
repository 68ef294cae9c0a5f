// sheetprinter add NAME PPD PORT | remove NAME: a PostScript printer of the system, for the test of printing.
// It is the default one until it is removed. The exit code is 0 when it is done, and otherwise says what failed.
// Layer 16: tests (Win32 only).

#include <windows.h>

#include <winspool.h>

#include <cwchar>
#include <string>

namespace {

// Parameters of Windows that it only reads have no const.
wchar_t* Text(const wchar_t* text) {
    return const_cast<wchar_t*>(text);
}

int Add(const wchar_t* name, const wchar_t* ppd, const wchar_t* port) {
    wchar_t folder[MAX_PATH] = L"";
    ::GetSystemDirectoryW(folder, MAX_PATH);
    const std::wstring program = std::wstring(folder) + L"\\wineps.drv";
    DRIVER_INFO_3W driver = {};
    driver.cVersion = 3;
    driver.pName = Text(name);
    driver.pEnvironment = Text(L"Windows x64");
    driver.pDriverPath = Text(program.c_str());
    driver.pConfigFile = Text(program.c_str());
    driver.pDataFile = Text(ppd);
    driver.pDefaultDataType = Text(L"RAW");
    const DWORD flags = APD_COPY_NEW_FILES | APD_COPY_FROM_DIRECTORY;
    if (!::AddPrinterDriverExW(nullptr, 3, reinterpret_cast<BYTE*>(&driver), flags)) {
        return 2;
    }
    PRINTER_INFO_2W printer = {};
    printer.pPrinterName = Text(name);
    printer.pPortName = Text(port);
    printer.pDriverName = Text(name);
    printer.pPrintProcessor = Text(L"winprint");
    printer.pDatatype = Text(L"RAW");
    const HANDLE added = ::AddPrinterW(nullptr, 2, reinterpret_cast<BYTE*>(&printer));
    if (added != nullptr) {
        ::ClosePrinter(added);
    } else if (::GetLastError() != ERROR_PRINTER_ALREADY_EXISTS) { // An interrupted run has left it.
        return 3;
    }
    return ::SetDefaultPrinterW(name) ? 0 : 4;
}

int Remove(const wchar_t* name) {
    HANDLE printer = nullptr;
    PRINTER_DEFAULTSW rights = {nullptr, nullptr, PRINTER_ALL_ACCESS};
    if (!::OpenPrinterW(Text(name), &printer, &rights)) {
        return 5;
    }
    const bool removed = ::DeletePrinter(printer) != 0;
    ::ClosePrinter(printer);
    return removed ? 0 : 6;
}

} // namespace

int wmain(int count, wchar_t** arguments) {
    if (count == 5 && std::wcscmp(arguments[1], L"add") == 0) {
        return Add(arguments[2], arguments[3], arguments[4]);
    }
    if (count == 3 && std::wcscmp(arguments[1], L"remove") == 0) {
        return Remove(arguments[2]);
    }
    return 1;
}
