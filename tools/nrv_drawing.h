// nrv: one stored drawing in memory, with what its loading came to; reading and writing of files and pipes.
// Layer 14: tools; includes the library's public headers only.
#pragma once

#include <VectorGraphic.h>

#include <Document.h>

#include <vector>

// Keeps the texts that the library would show in message boxes.
class CNrvApp : public CWinApp {
public:
    int DoMessageBox(LPCTSTR prompt, UINT, UINT) override {
        m_Said = prompt;
        ++m_Count;
        return IDOK;
    }
    int Count() const { return m_Count; }
    CString LastSaid() const { return m_Said; }

private:
    CString m_Said;
    int m_Count = 0;
};

class CNrvDrawing {
public:
    enum State {
        Whole,
        Damaged,   // Its header and some or none of its objects could be read.
        Unreadable // No file, no drawing, or not even a header.
    };

    CNrvDrawing();
    CNrvDrawing(const CNrvDrawing&) = delete;
    CNrvDrawing& operator=(const CNrvDrawing&) = delete;

    // "-" is the standard input. Drops what was loaded before.
    State Load(const CString& file);
    State GetState() const { return m_State; }
    // Why the drawing isn't whole, with the offset at which reading ends.
    CString Reason() const { return m_Reason; }
    CGraphicDocument* Document() { return m_Graphic.GetDocument(); }
    CVectorGraphic& Graphic() { return m_Graphic; }
    const CVectorViewCoordTran& Mapping() const { return m_Tran; }
    const std::vector<unsigned char>& Bytes() const { return m_Bytes; }
    // How many objects the header announces.
    int Announced() const { return m_Announced; }
    int Kept();
    // The offset after the last object that could be read, or the header's end.
    size_t EndOfWhole();
    // The schema that the stream's class record of that name has; -1 when there is none.
    int SchemaOf(const char* className) const;

private:
    // Loads the first `length` bytes. False when that failed, which the number of message boxes tells.
    bool LoadBytes(size_t length);

    CVectorViewCoordTran m_Tran;
    CVectorGraphic m_Graphic;
    std::vector<unsigned char> m_Bytes;
    State m_State = Unreadable;
    CString m_Reason;
    int m_Announced = 0;
};

CNrvApp& NrvApp();
// False, and the reason, on failure. "-" is the standard input or output. A file is replaced only when all of it was
// written.
bool NrvReadFile(const CString& name, std::vector<unsigned char>& bytes, CString& reason);
bool NrvWriteFile(const CString& name, const void* bytes, size_t length, CString& reason);
