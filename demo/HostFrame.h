// The demo's main window: menus, toolbar, status bar, files, and the views that it lays out.
// Layer 13: demo.
#pragma once

#include <afxcmn.h>
#include <afxwin.h>

#include <vector>

#include "DemoData.h"
#include "ExampleStrip.h"
#include "HostView.h"
#include "SectionDrawing.h"
#include "SectionView.h"
#include "SplitBar.h"

class CHostFrame : public CWnd {
public:
    CHostFrame() = default;
    ~CHostFrame() override;

    BOOL CreateFrame();
    // Replaces the drawing by that of a file. Shows what failed, and returns whether all succeeded.
    bool OpenFile(const CString& path);
    // Shows the parameter pane beside the drawing of its section, and puts the keyboard on its first value.
    void OpenSection();
    // Called in the program's idle time: updates status bar, title, focus.
    void UpdateShown();
    // Offers the drawings of programs that were killed, and opens one that is wanted; false when there was none.
    bool OfferRecovery();
    // Counts the messages that are shown to the user, so that the frame can detect that a load has reported a failure.
    void NoteMessage() { ++m_messages; }

    static const UINT SnapCount = 4;
    static const UINT BackgroundCount = 4;
    static const int UnscaledDots = 96; // Per inch.

protected:
    BOOL PreTranslateMessage(MSG* message) override;

    afx_msg int OnCreate(LPCREATESTRUCT create);
    afx_msg void OnSize(UINT nType, int cx, int cy);
    afx_msg void OnSetFocus(CWnd* old);
    afx_msg void OnPaint();
    afx_msg void OnClose();
    afx_msg void OnDestroy();
    afx_msg void OnInitMenuPopup(CMenu* popup, UINT index, BOOL sysMenu);
    afx_msg void OnMenuSelect(UINT id, UINT flags, HMENU menu);
    afx_msg void OnContextMenu(CWnd* from, CPoint point);
    afx_msg LRESULT OnDpiChanged(WPARAM dots, LPARAM place);
    afx_msg void OnTimer(UINT_PTR id);
    afx_msg void OnDropFiles(HDROP drop);
    afx_msg void OnMeasureItem(int id, LPMEASUREITEMSTRUCT measure);
    afx_msg void OnDrawItem(int id, LPDRAWITEMSTRUCT draw);
    afx_msg void OnFileNew();
    afx_msg void OnFileOpen();
    afx_msg void OnFileSave();
    afx_msg void OnFileSaveAs();
    afx_msg void OnFileExit();
    afx_msg void OnPrintPreview();
    afx_msg void OnPrint();
    afx_msg void OnCopyObjects();
    afx_msg void OnCopyPicture();
    afx_msg void OnPasteObjects();
    afx_msg void OnZoomAll();
    afx_msg void OnOrtho();
    afx_msg void OnBreakOff();
    afx_msg void OnDeselect();
    afx_msg void OnErase();
    afx_msg void OnAbout();
    afx_msg void OnNextPane();
    afx_msg void OnShowSection();
    afx_msg void OnProperties();
    afx_msg void OnDrawSection();
    afx_msg void OnSectionClick(NMHDR* header, LRESULT* result);
    afx_msg void OnUndo();
    afx_msg void OnRedo();
    afx_msg void OnSelectAll();
    afx_msg void OnClassic();
    afx_msg void OnRecent(UINT id);
    afx_msg void OnExample(UINT id);
    afx_msg void OnSnap(UINT id);
    afx_msg void OnBackground(UINT id);
    afx_msg void OnRunCommand(UINT id);
    DECLARE_MESSAGE_MAP()

private:
    // Panes of the status bar.
    static const int PaneCommand = 0;
    static const int PanePoint = 1;
    static const int PaneScale = 2;
    static const int PaneModes = 3;

    static CString GetSnapName(UINT i);
    bool IsEnabled(UINT id);
    bool IsChecked(UINT id);
    UINT GetBackgroundItem();
    CString Describe(UINT id);
    void FillRecentMenu();
    void MakeMenus();
    // Whether a text is being edited, which then got the message.
    bool GiveToEdit(UINT message);
    void MakeCommandItems(CMenu& menu, bool edit);
    void MakeImages(int size);
    // Pixels at 96 dots per inch, converted to those of the window.
    int Scaled(int pixels) const;
    void ApplyScale();
    void NameStep(CMenu& menu, UINT id, const CString& step);
    void SetItemImage(CMenu& menu, UINT id, int image);
    void AlignItems(CMenu& menu);
    void MakeToolbar();
    void AddButton(UINT id, int image, const wchar_t* tip);
    void AddButtonGap();
    bool MakeSectionPane();
    void LayOut();
    // The panes have frames in the main window, which show where the keyboard focus is.
    CRect GetPaneFrame(const CWnd& pane) const;
    void ShowActivePane();
    void ShowSectionPane(bool show);
    void MoveSplit(int x);
    // Replaces what the last call has drawn; all other objects of the drawing stay. The history begins anew, because it
    // does not contain the parameters. `changed`: the drawing has to be saved.
    void DrawSection(bool changed);
    // Called for each drawing that was loaded or made: fits it, and chooses what depends on its size.
    void ShowLoaded();
    bool SaveAs();
    bool Save();
    bool MayDiscard();
    void ForgetDrawing();
    CString GetShownName();
    void SetStatus(int pane, const CString& text);
    // Gives the prompt the width that it needs, and shows those other panes that fit beside it.
    void ArrangeStatus();
    void ShowExamples();
    // The usual place of the bar between the panes.
    int GetUsualSplit();
    CString DescribeCommand();

    CHostView m_view;
    CSectionView m_section;
    CSplitBar m_split;
    CExampleStrip m_examples;
    std::vector<DrawnObject> m_drawn; // the section's objects in the drawing; the drawing owns them
    bool m_drawsSection = false;      // the drawing follows the parameters and is not that of a file
    bool m_showSection = false;
    bool m_inSection = false; // the pane where the keyboard is, or was last
    int m_splitAt = 0;        // left edge of the bar; 0 for the usual one
    int m_dots = UnscaledDots;
    CFont m_font;
    CStatusBarCtrl m_status;
    HWND m_toolbar = nullptr;
    HIMAGELIST m_images = nullptr;
    HACCEL m_keys = nullptr;
    HMENU m_recentMenu = nullptr; // A part of the menu bar, which owns it.
    CRecentFiles m_recent;
    CRecoveryCopy m_recovery;
    CString m_shown[4];             // The texts of the status bar, by pane.
    std::vector<int> m_statusPanes; // Those that are shown, from the left.
    std::vector<int> m_statusEdges; // Their right edges.
    CString m_title;
    CString m_path; // empty while the drawing has no file of its own
    int m_osnap = 15;
    int m_ortho = 0;
    int m_messages = 0;
};
