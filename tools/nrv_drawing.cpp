#include "nrv_drawing.h"

#include "nrv_text.h"

#include <algorithm>
#include <climits>
#include <cstring>

namespace {

constexpr size_t kHeaderBytes = 38;
constexpr size_t kCountOffset = 34;

CNrvApp g_App;

bool ReadAll(HANDLE handle, std::vector<unsigned char>& bytes, CString& reason) {
    constexpr DWORD kChunk = 1u << 16;
    bytes.clear();
    for (;;) {
        const size_t had = bytes.size();
        if (had > UINT_MAX - kChunk) {
            reason = L"too large";
            return false;
        }
        bytes.resize(had + kChunk);
        DWORD got = 0;
        const BOOL read = ::ReadFile(handle, bytes.data() + had, kChunk, &got, nullptr);
        const DWORD error = read ? ERROR_SUCCESS : ::GetLastError();
        bytes.resize(had + (read ? got : 0));
        if (!read && error != ERROR_BROKEN_PIPE && error != ERROR_HANDLE_EOF) {
            reason = L"cannot read: " + NrvText::SystemText(error);
            return false;
        }
        if (!read || got == 0) {
            return true;
        }
    }
}

bool WriteAll(HANDLE handle, const void* bytes, size_t length) {
    const auto* next = static_cast<const unsigned char*>(bytes);
    while (length > 0) {
        DWORD done = 0;
        const DWORD part = static_cast<DWORD>(std::min<size_t>(length, 1u << 20));
        if (!::WriteFile(handle, next, part, &done, nullptr) || done == 0) {
            return false;
        }
        next += done;
        length -= done;
    }
    return true;
}

} // namespace

CNrvApp& NrvApp() {
    return g_App;
}

bool NrvReadFile(const CString& name, std::vector<unsigned char>& bytes, CString& reason) {
    if (name == L"-") {
        return ReadAll(::GetStdHandle(STD_INPUT_HANDLE), bytes, reason);
    }
    HANDLE handle = ::CreateFileW(name, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        reason = L"cannot open: " + NrvText::SystemText(::GetLastError());
        return false;
    }
    const bool done = ReadAll(handle, bytes, reason);
    ::CloseHandle(handle);
    return done;
}

bool NrvWriteFile(const CString& name, const void* bytes, size_t length, CString& reason) {
    if (name == L"-") {
        if (!WriteAll(::GetStdHandle(STD_OUTPUT_HANDLE), bytes, length)) {
            reason = L"cannot write: " + NrvText::SystemText(::GetLastError());
            return false;
        }
        return true;
    }
    CString part;
    part.Format(L"%ls.%u.part", static_cast<LPCTSTR>(name), ::GetCurrentProcessId());
    HANDLE handle = ::CreateFileW(part, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        reason = L"cannot write: " + NrvText::SystemText(::GetLastError());
        return false;
    }
    bool done = WriteAll(handle, bytes, length);
    DWORD error = done ? ERROR_SUCCESS : ::GetLastError();
    ::CloseHandle(handle);
    if (done && !::MoveFileExW(part, name, MOVEFILE_REPLACE_EXISTING)) {
        error = ::GetLastError();
        done = false;
    }
    if (!done) {
        ::DeleteFileW(part);
        reason = L"cannot write: " + NrvText::SystemText(error);
    }
    return done;
}

CNrvDrawing::CNrvDrawing() {
    m_Graphic.SetVectorViewCoordTran(&m_Tran);
}

bool CNrvDrawing::LoadBytes(size_t length) {
    const int before = g_App.Count();
    Document()->OpenDocument(m_Bytes.data(), static_cast<unsigned int>(length));
    return g_App.Count() == before;
}

CNrvDrawing::State CNrvDrawing::Load(const CString& file) {
    Document()->Reset();
    m_Reason.Empty();
    m_Announced = 0;
    m_State = Unreadable;
    if (!NrvReadFile(file, m_Bytes, m_Reason)) {
        return m_State;
    }
    if (m_Bytes.empty()) {
        m_Reason = L"not a drawing: the file is empty";
        return m_State;
    }
    int version = 0;
    if (m_Bytes.size() >= sizeof(version)) {
        std::memcpy(&version, m_Bytes.data(), sizeof(version));
    }
    if (version != kDocumentVersion) {
        m_Reason = L"not a drawing of a known version (byte 0)";
        return m_State;
    }
    if (m_Bytes.size() < kHeaderBytes) {
        m_Reason.Format(L"ends at byte %u, within its header of %u bytes", static_cast<unsigned>(m_Bytes.size()),
                        static_cast<unsigned>(kHeaderBytes));
        return m_State;
    }
    std::memcpy(&m_Announced, m_Bytes.data() + kCountOffset, sizeof(m_Announced));
    const bool loaded = LoadBytes(m_Bytes.size());
    if (m_Announced < 0) {
        m_State = Damaged;
        m_Reason.Format(L"damaged at byte %u: it announces %d objects", static_cast<unsigned>(kCountOffset),
                        m_Announced);
    } else if (!loaded) {
        m_State = Damaged;
        m_Reason.Format(L"damaged at byte %u: %d of %d objects could be read", static_cast<unsigned>(EndOfWhole()),
                        Kept(), m_Announced);
    } else {
        m_State = Whole;
    }
    return m_State;
}

int CNrvDrawing::Kept() {
    return static_cast<int>(Document()->GetDrawableObjs()->GetSize());
}

size_t CNrvDrawing::EndOfWhole() {
    // A shorter beginning never holds more whole objects: the shortest with all of them ends with the last.
    const int kept = Kept();
    size_t low = kHeaderBytes;
    size_t high = m_Bytes.size();
    while (low < high) {
        const size_t middle = low + (high - low) / 2;
        LoadBytes(middle);
        if (Kept() >= kept) {
            high = middle;
        } else {
            low = middle + 1;
        }
    }
    LoadBytes(m_Bytes.size());
    return low;
}

int CNrvDrawing::SchemaOf(const char* className) const {
    // A class record: the tag 0xFFFF, the schema, the length of the name and the name.
    const size_t length = std::strlen(className);
    std::vector<unsigned char> wanted = {static_cast<unsigned char>(length), 0};
    wanted.insert(wanted.end(), className, className + length);
    for (auto at = m_Bytes.begin();;) {
        at = std::search(at, m_Bytes.end(), wanted.begin(), wanted.end());
        if (at == m_Bytes.end()) {
            return -1;
        }
        if (at - m_Bytes.begin() >= 4 && at[-4] == 0xFF && at[-3] == 0xFF) {
            return at[-2] | (at[-1] << 8);
        }
        ++at;
    }
}
