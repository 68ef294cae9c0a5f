// The C interface: the parameter view: clicks, edits, keys, refusals, the wheel.

#include "support/CHost.h"

#include <string.h>

// Three parameters below one another, with a line between the second and the third in the list.
typedef struct Parms {
    CHost host;
    NrvId a, b, c, line;
} Parms;

static int Open(Parms* parms) {
    if (!EXPECT(CHostOpen(&parms->host, NRV_PARM_VIEW_CLASS))) {
        return 0;
    }
    const NrvHandle view = parms->host.view;
    EXPECT_INT(NRV_OK, NrvAddParm(view, 50, 250, L"10", L"A", 20, 0xFFFFFF, &parms->a));
    EXPECT_INT(NRV_OK, NrvAddParm(view, 50, 200, L"20", L"B", 20, 0xFFFFFF, &parms->b));
    EXPECT_INT(NRV_OK, NrvAddLine(view, 300, 250, 390, 250, 0xFFFFFF, &parms->line));
    EXPECT_INT(NRV_OK, NrvAddParm(view, 50, 150, L"30", L"C", 20, 0xFFFFFF, &parms->c));
    UpdateWindow(parms->host.view); // A parameter's height is measured by the paint.
    CHostPump();
    CHostTakeLog();
    return 1;
}

// Client pixels within the texts of A, B and C.
enum { X = 55, Y_A = 58, Y_B = 108, Y_C = 158 };

static NrvId Edited(Parms* parms) {
    NrvId id = 99;
    EXPECT_INT(NRV_OK, NrvGetEdit(parms->host.view, &id));
    return id;
}

static const wchar_t* BoxText(Parms* parms) {
    static wchar_t text[64];
    uint32_t length = 0;
    text[0] = 0;
    EXPECT_INT(NRV_OK, NrvGetEditText(parms->host.view, text, 64, &length));
    return text;
}

static const wchar_t* Value(Parms* parms, NrvId id) {
    return CHostString(parms->host.view, id, NRV_STRING_TEXT);
}

#define STORED_A L"accept 7; storing 10>7; changing modified 1; changed modified 1; stored 10>7; closed; "

C_TEST(CapiParm, AClickOpensTheBoxAndTheTypedTextIsStored) {
    Parms p;
    REQUIRE(Open(&p));
    CHostClick(&p.host, X, Y_A);
    EXPECT_TEXT(L"opening 10; ", CHostTakeLog());
    EXPECT(Edited(&p) == p.a);
    EXPECT_TEXT(L"10", BoxText(&p));
    EXPECT(GetFocus() == CHostBox(&p.host));
    CHostType(L"7");
    EXPECT_TEXT(L"7", BoxText(&p));
    EXPECT_TEXT(L"10", Value(&p, p.a)); // Not stored yet.
    EXPECT_INT(NRV_OK, NrvEndEdit(p.host.view));
    EXPECT_TEXT(STORED_A, CHostTakeLog());
    EXPECT_TEXT(L"7", Value(&p, p.a));
    EXPECT(Edited(&p) == 0);
    EXPECT(CHostBox(&p.host) == NULL);
    EXPECT_INT(NRV_OK, NrvEndEdit(p.host.view)); // None is open.
    EXPECT_TEXT(L"", CHostTakeLog());
    CHostClose(&p.host);
}

C_TEST(CapiParm, TheHostOpensAnEditAndPutsItsTextThere) {
    Parms p;
    REQUIRE(Open(&p));
    EXPECT_INT(NRV_OK, NrvBeginEdit(p.host.view, p.b));
    EXPECT(Edited(&p) == p.b);
    EXPECT_INT(NRV_OK, NrvSetEditText(p.host.view, L"21"));
    EXPECT_TEXT(L"21", BoxText(&p));
    EXPECT_INT(NRV_OK, NrvBeginEdit(p.host.view, p.c)); // Ends the edit of B.
    EXPECT_TEXT(L"21", Value(&p, p.b));
    EXPECT(Edited(&p) == p.c);
    EXPECT_INT(NRV_OK, NrvEndEdit(p.host.view));
    EXPECT_INT(NRV_OK, NrvSetInt(p.host.view, p.c, NRV_INT_PARM_TYPE, 4));
    EXPECT_INT(NRV_E_REFUSED, NrvBeginEdit(p.host.view, p.c));
    EXPECT_INT(NRV_E_STATE, NrvSetEditText(p.host.view, L"1"));
    CHostClose(&p.host);
}

// ---- Keys, in each loop ----

static void Walk(void (*pump)(void)) {
    Parms p;
    REQUIRE(Open(&p));
    CHostClick(&p.host, X, Y_A);
    CHostType(L"7");
    CHostTakeLog();
    CHostPostKey(VK_TAB);
    pump();
    EXPECT_TEXT(STORED_A L"opening 20; ", CHostTakeLog());
    EXPECT(Edited(&p) == p.b);
    CHostPostKey(VK_RETURN); // Does what Tab does.
    pump();
    EXPECT_TEXT(L"accept 20; storing 20>20; stored 20>20; closed; opening 30; ", CHostTakeLog());
    EXPECT(Edited(&p) == p.c);
    CHostType(L"9");
    CHostTakeLog();
    CHostPostKey(VK_ESCAPE); // Stores the text that the edit began with.
    pump();
    EXPECT_TEXT(L"accept 30; storing 30>30; stored 30>30; closed; ", CHostTakeLog());
    EXPECT(Edited(&p) == 0);
    EXPECT_TEXT(L"30", Value(&p, p.c));
    EXPECT_TEXT(L"7", Value(&p, p.a));
    CHostClose(&p.host);
}

static void PumpAsDialog(void) {
    CHostPumpDialog(GetActiveWindow());
}

C_TEST(CapiParm, TabReturnAndEscapeWorkInALoopThatKnowsNothing) {
    Walk(CHostPump);
}

C_TEST(CapiParm, TabReturnAndEscapeWorkInALoopOfADialog) {
    Walk(PumpAsDialog);
}

C_TEST(CapiParm, TabReturnAndEscapeWorkInALoopThatTranslates) {
    Walk(CHostPumpTranslated);
}

// ---- What a handler may do ----

static void Decide(NrvEvent* event) {
    if (event->header.code == NRV_N_EDIT_OPENING && wcscmp(event->text, L"20") == 0) {
        event->answer = 0;
    }
    if (event->header.code == NRV_N_EDIT_ACCEPT && event->text[0] == L'-') {
        event->answer = 0;
    }
    if (event->header.code == NRV_N_EDIT_STORING && wcscmp(event->text, L"7") == 0) {
        wchar_t text[8];
        uint32_t length = 0;
        EXPECT_INT(NRV_OK, NrvGetEditText(event->source, text, 8, &length));
        EXPECT_TEXT(L"7", text);
        EXPECT_INT(NRV_OK, NrvSetEditText(event->source, L"7.0"));
        EXPECT_INT(NRV_OK, NrvGetEditText(event->source, text, 8, &length));
        EXPECT_TEXT(L"7.0", text);
    }
}

C_TEST(CapiParm, AHandlerReplacesTheTextThatIsStored) {
    Parms p;
    REQUIRE(Open(&p));
    CHostSetHandler(Decide);
    CHostClick(&p.host, X, Y_A);
    CHostType(L"7");
    EXPECT_INT(NRV_OK, NrvEndEdit(p.host.view));
    EXPECT_TEXT(L"7.0", Value(&p, p.a));
    EXPECT(wcsstr(CHostTakeLog(), L"stored 10>7.0; ") != NULL);
    CHostClose(&p.host);
}

C_TEST(CapiParm, AHandlerRefusesTheOpeningOfABox) {
    Parms p;
    REQUIRE(Open(&p));
    CHostSetHandler(Decide);
    EXPECT_INT(NRV_E_REFUSED, NrvBeginEdit(p.host.view, p.b));
    EXPECT(CHostBox(&p.host) == NULL);
    CHostClick(&p.host, X, Y_B);
    EXPECT_TEXT(L"opening 20; opening 20; ", CHostTakeLog());
    EXPECT(Edited(&p) == 0);
    CHostClose(&p.host);
}

C_TEST(CapiParm, ARefusedTextStaysUntilTheNextEditDropsIt) {
    Parms p;
    REQUIRE(Open(&p));
    CHostSetHandler(Decide);
    CHostClick(&p.host, X, Y_A);
    CHostType(L"-5");
    CHostTakeLog();
    EXPECT_INT(NRV_E_REFUSED, NrvEndEdit(p.host.view));
    EXPECT_TEXT(L"accept -5; ", CHostTakeLog());
    EXPECT_TEXT(L"-5", BoxText(&p));
    EXPECT_TEXT(L"10", Value(&p, p.a));
    EXPECT_INT(NRV_OK, NrvBeginEdit(p.host.view, p.c));
    EXPECT(Edited(&p) == p.c);
    EXPECT_TEXT(L"10", Value(&p, p.a));
    CHostClose(&p.host);
}

C_TEST(CapiParm, AStrictRefusalKeepsTheTextAndTheFocus) {
    Parms p;
    int32_t strict = -1;
    REQUIRE(Open(&p));
    EXPECT_INT(NRV_OK, NrvGetStrictRefusal(p.host.view, &strict));
    EXPECT_INT(0, strict);
    EXPECT_INT(NRV_OK, NrvSetStrictRefusal(p.host.view, 1));
    EXPECT_INT(NRV_OK, NrvGetStrictRefusal(p.host.view, &strict));
    EXPECT_INT(1, strict);
    CHostSetHandler(Decide);
    CHostClick(&p.host, X, Y_A);
    CHostType(L"-5");
    EXPECT_INT(NRV_E_REFUSED, NrvBeginEdit(p.host.view, p.c));
    EXPECT(Edited(&p) == p.a);
    CHostPostKey(VK_TAB);
    CHostPump();
    EXPECT(Edited(&p) == p.a);
    EXPECT_TEXT(L"-5", BoxText(&p));
    CHostClick(&p.host, 200, 290);
    EXPECT(Edited(&p) == p.a);
    EXPECT(GetFocus() == CHostBox(&p.host));
    EXPECT_INT(NRV_OK, NrvSetEditText(p.host.view, L"5"));
    EXPECT_INT(NRV_OK, NrvEndEdit(p.host.view));
    EXPECT_TEXT(L"5", Value(&p, p.a));
    CHostClose(&p.host);
}

static uint32_t g_endAt;

static void DestroyParent(NrvEvent* event) {
    if (event->header.code == g_endAt) {
        DestroyWindow(GetParent((HWND)event->header.window));
    }
}

C_TEST(CapiParm, AHandlerMayDestroyTheWindowAtAnyMomentOfAnEdit) {
    const uint32_t codes[] = {NRV_N_EDIT_OPENING, NRV_N_EDIT_ACCEPT, NRV_N_EDIT_STORING, NRV_N_CHANGING,
                              NRV_N_EDIT_STORED,  NRV_N_EDIT_ENDED,  NRV_N_CHANGED};
    for (size_t i = 0; i < sizeof codes / sizeof codes[0]; ++i) {
        for (int byKey = 0; byKey < 2; ++byKey) {
            Parms p;
            REQUIRE(Open(&p));
            const HWND view = p.host.view;
            CHostSetHandler(DestroyParent);
            g_endAt = codes[i];
            CHostClick(&p.host, X, Y_A);
            if (IsWindow(view)) {
                CHostType(L"7");
                if (byKey) {
                    CHostPostKey(VK_TAB);
                    CHostPump();
                } else {
                    EXPECT_INT(NRV_E_ENDED, NrvEndEdit(view));
                }
            }
            EXPECT(!IsWindow(view));
            p.host.parent = NULL;
            CHostClose(&p.host);
        }
    }
}

static void ClearDrawing(NrvEvent* event) {
    if (event->header.code == g_endAt) {
        CHostSetHandler(NULL);
        EXPECT_INT(NRV_OK, NrvClear(event->source));
    }
}

C_TEST(CapiParm, AHandlerMayClearTheDrawingAtAnyMomentOfAnEdit) {
    const uint32_t codes[] = {NRV_N_EDIT_OPENING, NRV_N_EDIT_ACCEPT, NRV_N_EDIT_STORING,
                              NRV_N_CHANGING,     NRV_N_EDIT_STORED, NRV_N_EDIT_ENDED};
    for (size_t i = 0; i < sizeof codes / sizeof codes[0]; ++i) {
        Parms p;
        uint32_t count = 99;
        int32_t kind = 0;
        REQUIRE(Open(&p));
        CHostSetHandler(ClearDrawing);
        g_endAt = codes[i];
        CHostClick(&p.host, X, Y_A);
        CHostType(L"7");
        const NrvResult result = NrvEndEdit(p.host.view);
        EXPECT_INT(NRV_OK, result);
        EXPECT_INT(NRV_OK, NrvGetObjects(p.host.view, NRV_LIST_DRAWING, NULL, 0, &count));
        EXPECT_INT(0, count);
        EXPECT_INT(NRV_E_OBJECT, NrvGetKind(p.host.view, p.a, &kind));
        EXPECT(Edited(&p) == 0);
        CHostClose(&p.host);
    }
}

static void RemoveEdited(NrvEvent* event) {
    if (event->header.code == g_endAt) {
        CHostSetHandler(NULL);
        EXPECT_INT(NRV_OK, NrvRemove(event->source, event->id));
    }
}

C_TEST(CapiParm, AHandlerMayRemoveTheEditedParameter) {
    const uint32_t codes[] = {NRV_N_EDIT_OPENING, NRV_N_EDIT_ACCEPT, NRV_N_EDIT_STORING, NRV_N_EDIT_STORED,
                              NRV_N_EDIT_ENDED};
    for (size_t i = 0; i < sizeof codes / sizeof codes[0]; ++i) {
        Parms p;
        uint32_t count = 99;
        REQUIRE(Open(&p));
        CHostSetHandler(RemoveEdited);
        g_endAt = codes[i];
        CHostClick(&p.host, X, Y_A);
        CHostType(L"7");
        EXPECT_INT(NRV_OK, NrvEndEdit(p.host.view));
        EXPECT_INT(NRV_OK, NrvGetParmCount(p.host.view, &count));
        EXPECT_INT(2, count);
        EXPECT(Edited(&p) == 0);
        CHostClose(&p.host);
    }
}

// ---- Clicks ----

C_TEST(CapiParm, ClicksTellTheObjectAndNoOtherNotificationComes) {
    Parms p;
    REQUIRE(Open(&p));
    EXPECT_INT(NRV_OK, NrvSetInt(p.host.view, p.b, NRV_INT_PARM_BOX, 0));
    CHostTakeLog();
    CHostClick(&p.host, 350, 50);
    EXPECT_TEXT(L"click line -1; ", CHostTakeLog());
    CHostClick(&p.host, X, Y_B);
    EXPECT_TEXT(L"click parm -1; ", CHostTakeLog());
    CHostClick(&p.host, 200, 290);
    EXPECT_TEXT(L"click none -1; ", CHostTakeLog());
    SendMessageW(p.host.view, WM_LBUTTONDBLCLK, MK_LBUTTON, MAKELPARAM(350, 50));
    EXPECT_TEXT(L"double line; ", CHostTakeLog());
    const NrvPoint points[3] = {{300, 100}, {390, 100}, {390, 20}};
    EXPECT_INT(NRV_OK, NrvAddPolyline(p.host.view, points, NULL, 3, 0, 0xFFFFFF, NULL));
    CHostTakeLog();
    CHostClick(&p.host, 390, 240);
    EXPECT_TEXT(L"click polyline 1; ", CHostTakeLog());
    CHostClose(&p.host);
}

C_TEST(CapiParm, APressBesideTheBoxEndsTheEditFirst) {
    Parms p;
    REQUIRE(Open(&p));
    CHostClick(&p.host, X, Y_A);
    CHostType(L"7");
    CHostTakeLog();
    CHostClick(&p.host, 350, 50);
    EXPECT_TEXT(STORED_A L"click line -1; ", CHostTakeLog());
    EXPECT(Edited(&p) == 0);
    CHostClose(&p.host);
}

C_TEST(CapiParm, TheWheelZoomsUnlessItIsSwitchedOff) {
    Parms p;
    NrvMapping mapping = {sizeof mapping, 0, 0, 0, 0};
    REQUIRE(Open(&p));
    int32_t on = -1;
    EXPECT_INT(NRV_OK, NrvGetWheel(p.host.view, &on));
    EXPECT_INT(1, on);
    EXPECT_INT(NRV_OK, NrvSetWheel(p.host.view, 0));
    EXPECT_INT(NRV_OK, NrvGetWheel(p.host.view, &on));
    EXPECT_INT(0, on);
    SendMessageW(p.host.view, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    EXPECT_INT(NRV_OK, NrvGetMapping(p.host.view, &mapping));
    EXPECT_NEAR_TO(1.0, mapping.scale, 0);
    EXPECT_INT(NRV_OK, NrvSetWheel(p.host.view, 1));
    SendMessageW(p.host.view, WM_MOUSEWHEEL, MAKEWPARAM(0, 120), 0);
    EXPECT_INT(NRV_OK, NrvGetMapping(p.host.view, &mapping));
    EXPECT_NEAR_TO(0.8, mapping.scale, 1e-6);
    CHostClose(&p.host);
}

C_TEST(CapiParm, NumbersAreShownShortAtFirst) {
    Parms p;
    int32_t show = -1;
    wchar_t text[16];
    uint32_t length = 0;
    REQUIRE(Open(&p));
    EXPECT_INT(NRV_OK, NrvGetShowDecimals(p.host.view, &show));
    EXPECT_INT(0, show);
    EXPECT_INT(NRV_OK, NrvSetParmValue(p.host.view, L"A", L"1.25"));
    EXPECT_INT(NRV_OK, NrvGetShownText(p.host.view, p.a, text, 16, &length));
    EXPECT_TEXT(L"1.3", text);
    CHostClose(&p.host);
}

// A view in a plain message loop, without a call of PreTranslateMessage, without which a tooltip never shows.
C_TEST(CapiParm, TheTooltipShowsTheDescriptionInAPlainLoop) {
    Parms p;
    REQUIRE(Open(&p));
    EXPECT_INT(NRV_OK, NrvSetString(p.host.view, p.a, NRV_STRING_DESCRIPTION, L"the width"));
    SetCursorPos(100 + X, 80 + Y_A);
    CHostMove(&p.host, X, Y_A);
    int shown = 0;
    const DWORD begun = GetTickCount();
    while (!shown && GetTickCount() - begun < 5000) {
        MsgWaitForMultipleObjects(0, NULL, FALSE, 50, QS_ALLINPUT);
        CHostPump();
        for (HWND tip = FindWindowExW(NULL, NULL, L"tooltips_class32", NULL); tip != NULL;
             tip = FindWindowExW(NULL, tip, L"tooltips_class32", NULL)) {
            shown = shown || (GetWindowThreadProcessId(tip, NULL) == GetCurrentThreadId() && IsWindowVisible(tip));
        }
    }
    EXPECT(shown);
    CHostClose(&p.host);
}

static void GoFromAToC(NrvEvent* event) {
    if (event->header.code == NRV_N_EDIT_NEXT) {
        NrvId parm = 0;
        uint32_t length = 0;
        wchar_t name[8];
        EXPECT_INT(NRV_OK, NrvGetString(event->source, event->id, NRV_STRING_NAME, name, 8, &length));
        EXPECT_INT(1, event->answer);
        if (wcscmp(name, L"A") == 0) {
            event->answer = 0;
            EXPECT_INT(NRV_OK, NrvFindParm(event->source, L"C", &parm));
            EXPECT_INT(NRV_OK, NrvBeginEdit(event->source, parm));
        }
    }
}

C_TEST(CapiParm, AHandlerDecidesWhereTabGoes) {
    Parms p;
    REQUIRE(Open(&p));
    CHostSetHandler(GoFromAToC);
    CHostClick(&p.host, X, Y_A);
    CHostType(L"7");
    CHostPostKey(VK_TAB);
    CHostPump();
    EXPECT(Edited(&p) == p.c);
    EXPECT_TEXT(L"7", Value(&p, p.a));
    CHostPostKey(VK_RETURN); // From the last one on to the first.
    CHostPump();
    EXPECT(Edited(&p) == p.a);
    CHostClose(&p.host);
}

// The tooltip of this thread that is shown; null for none.
static HWND ShownTip(void) {
    for (HWND tip = FindWindowExW(NULL, NULL, L"tooltips_class32", NULL); tip != NULL;
         tip = FindWindowExW(NULL, tip, L"tooltips_class32", NULL)) {
        if (GetWindowThreadProcessId(tip, NULL) == GetCurrentThreadId() && IsWindowVisible(tip)) {
            return tip;
        }
    }
    return NULL;
}

C_TEST(CapiParm, TheHostSetsTheTooltip) {
    Parms p;
    REQUIRE(Open(&p));
    EXPECT_INT(NRV_OK, NrvSetTooltip(p.host.view, L"from the host"));
    SetCursorPos(100 + 200, 80 + 290);
    CHostMove(&p.host, 200, 290);
    const DWORD begun = GetTickCount();
    while (ShownTip() == NULL && GetTickCount() - begun < 5000) {
        MsgWaitForMultipleObjects(0, NULL, FALSE, 50, QS_ALLINPUT);
        CHostPump();
    }
    EXPECT(ShownTip() != NULL);
    EXPECT_INT(NRV_OK, NrvSetTooltip(p.host.view, NULL));
    CHostPump();
    EXPECT(ShownTip() == NULL);
    CHostClose(&p.host);
}
