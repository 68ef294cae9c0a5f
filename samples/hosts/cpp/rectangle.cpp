// A parameter view of a rectangle in a C++ host: width and height are edited in the picture, the area follows. Negative
// values are refused. After every change the drawing is stored in a buffer, and the buffer is read back into a second
// view that has no window. Prints what happens, a line each.
#include <PLine.h>
#include <TextParm.h>
#include <VectorViewParm.h>

#include <cstdio>
#include <vector>

class CRectangleView : public CVectorViewParm {
public:
    // Makes the drawing. The document owns its objects.
    void Fill(double width, double height) {
        CGePointArray corners;
        CBulgeArray bulges;
        CStringArray none;
        corners.SetSize(4);
        bulges.SetSize(4);
        none.SetSize(4);
        AddPLine(corners, bulges, Gdiplus::Color(255, 255, 255, 255), none, none, 1, 0);
        AddValue(L"width", width, Gdiplus::Color(255, 255, 255, 0));
        AddValue(L"height", height, Gdiplus::Color(255, 255, 255, 0));
        AddValue(L"area", width * height, Gdiplus::Color(255, 0, 200, 0))->SetNeedEditBox(0); // a result
        Follow();
    }

    // The value of a parameter; 0 where there is none of that name.
    double Value(LPCTSTR name) {
        CTextParm* parm = Find(name);
        return parm != nullptr ? _wtof(parm->GetText()) : 0;
    }

    // Opens the edit box of a parameter, as a click on it does.
    void Edit(LPCTSTR name) {
        UpdateWindow(); // which measures the height of the box
        DoEditForClicked(0, Find(name)->GetPos() + CGeVector2d(5, -5));
    }

    std::vector<unsigned char> Store() {
        CMemFile file;
        GetDocument()->StoreToMemFile(&file);
        std::vector<unsigned char> bytes(static_cast<size_t>(file.GetLength()));
        file.SeekToBegin();
        file.Read(bytes.data(), static_cast<UINT>(bytes.size()));
        return bytes;
    }

protected:
    int OnAcceptEditData(CTextParm* parm, CString text) override {
        wchar_t* end = nullptr;
        if (std::wcstod(text, &end) > 0 && *end == 0) {
            return 1;
        }
        std::printf("refused: %ls of %ls\n", static_cast<LPCTSTR>(text), static_cast<LPCTSTR>(parm->GetParmName()));
        return 0;
    }

    void OnEditChanged(CTextParm*, CString oldText, CString newText) override {
        if (oldText == newText) {
            return;
        }
        Follow();
        ZoomAll();
        std::vector<unsigned char> bytes = Store();
        CRectangleView copy;
        copy.LoadFile(bytes.data(), static_cast<unsigned int>(bytes.size()));
        std::printf("width %g, height %g, area %g; read back from %u bytes: area %g\n", Value(L"width"),
                    Value(L"height"), Value(L"area"), static_cast<unsigned>(bytes.size()), copy.Value(L"area"));
    }

private:
    CTextParm* AddValue(LPCTSTR name, double value, Gdiplus::Color color) {
        CString text;
        text.Format(L"%g", value);
        return static_cast<CTextParm*>(AddParmText(CGePoint2d(), text, name, 0, color, 20, 0));
    }

    CTextParm* Find(LPCTSTR name) {
        CDrawableArray* list = GetDocument()->GetDrawableObjs();
        for (INT_PTR i = 0; i < list->GetSize(); ++i) {
            auto* parm = DYNAMIC_DOWNCAST(CTextParm, list->GetAt(i));
            if (parm != nullptr && parm->GetParmName() == name) {
                return parm;
            }
        }
        return nullptr;
    }

    // Outline, places and area from width and height.
    void Follow() {
        const double width = Value(L"width");
        const double height = Value(L"height");
        auto* outline = static_cast<CPLine*>(GetDocument()->GetDrawableObjs()->GetAt(0));
        for (int i = 0; i < 4; ++i) {
            outline->SetPoint(i, CGePoint2d(i == 1 || i == 2 ? width : 0, i >= 2 ? height : 0));
        }
        Find(L"width")->SetPos(CGePoint2d(width / 2, -10));
        Find(L"height")->SetPos(CGePoint2d(width + 10, height / 2));
        Find(L"area")->SetPos(CGePoint2d(width / 2, height / 2));
        CString area;
        area.Format(L"%g", width * height);
        Find(L"area")->SetText(area);
    }
};

class CHostWindow : public CWnd {
public:
    void Open() {
        CreateEx(0, AfxRegisterWndClass(0, ::LoadCursor(nullptr, IDC_ARROW)), L"Rectangle", WS_OVERLAPPEDWINDOW, 40, 40,
                 640, 480, nullptr, nullptr);
        CRect client;
        GetClientRect(client);
        m_View.Fill(300, 200);
        m_View.SetStrictRefusal(1);
        m_View.Create(nullptr, L"", WS_CHILD | WS_VISIBLE, client, this, 1);
        m_View.ZoomAll();
        ShowWindow(SW_SHOW);
    }
    ~CHostWindow() override { DestroyWindow(); }

private:
    afx_msg void OnSetFocus(CWnd*) { m_View.Edit(L"width"); }
    DECLARE_MESSAGE_MAP()

    CRectangleView m_View;
};

BEGIN_MESSAGE_MAP(CHostWindow, CWnd)
    ON_WM_SETFOCUS()
END_MESSAGE_MAP()

class CHostApp : public CWinApp {
    BOOL InitInstance() override {
        static CHostWindow window;
        m_pMainWnd = &window;
        window.Open();
        return window.m_hWnd != nullptr;
    }
};

CHostApp theApp;

int main() {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    return AfxWinMain(::GetModuleHandle(nullptr), nullptr, nullptr, SW_SHOW);
}
