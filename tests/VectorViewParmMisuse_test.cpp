// Hosts that misbehave inside the hooks and notifications of a parameter view: no fault, and a defined end of the edit.

#include "support/BoxAnswer.h"
#include "support/ParmHost.h"

#include <KXBaseOpr.h>
#include <Line.h>

#include <new>

namespace {

// ---- Hosts that misbehave ------------------------------------------------------------------------------------------

struct MisbehavingHost : ThreeParms {
    void Delete(CTextParm* parm) {
        view.GetDocument()->DeleteObject(parm);
        CKXMemoryManager::Instance()->RemoveMemoryInfo(parm, __FILE__, __LINE__);
        delete parm;
    }
    bool IsListed(const CDrawable* obj) {
        CDrawableArray* objs = view.GetDocument()->GetDrawableObjs();
        for (INT_PTR i = 0; i < objs->GetSize(); ++i) {
            if (objs->GetAt(i) == obj) {
                return true;
            }
        }
        return false;
    }
};

TEST_F(MisbehavingHost, AnEditWhoseParameterWasDeletedStoresNothingAndCloses) {
    EditA();
    Delete(a);
    other.SetFocus();
    EXPECT_EQ(Events{}, Take());
    ExpectClosed();
}

TEST_F(MisbehavingHost, ATabFromADeletedParameterWrapsToTheFirst) {
    EditA();
    Delete(a);
    Key(VK_TAB);
    EXPECT_EQ((Events{"tab", "pre B", "query B"}), Take());
    ExpectOpenOn(b, L"20");
}

TEST_F(MisbehavingHost, AParameterThatOnlyLeftTheListIsLeftAlone) {
    EditA();
    view.GetDocument()->DeleteObject(a);
    view.DoEndEdit();
    EXPECT_EQ(Events{}, Take());
    EXPECT_EQ(L"10", a->GetText());
    ExpectClosed();
    CKXMemoryManager::Instance()->RemoveMemoryInfo(a, __FILE__, __LINE__);
    delete a;
}

TEST_F(MisbehavingHost, DeletedInsideEachHookTheEditClosesThere) {
    const struct {
        const char* hook;
        Events expected;
    } rows[] = {
        {"accept", {"accept A 7"}},
        {"changing", {"accept A 7", "changing A 10>7"}},
        {"changed", {"accept A 7", "changing A 10>7", "changed A 10>7"}},
        {"end", {"accept A 7", "changing A 10>7", "changed A 10>7", "end A"}},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.hook);
        EditA();
        const std::string hook = row.hook;
        view.onAccept = [&](CTextParm* parm, const CString&) {
            if (hook == "accept") {
                Delete(parm);
            }
            return 1;
        };
        view.onChanging = [&](CTextParm* parm, const CString&, CString&) {
            if (hook == "changing") {
                Delete(parm);
            }
        };
        view.onChanged = [&](CTextParm* parm) {
            if (hook == "changed") {
                Delete(parm);
            }
        };
        view.onEnd = [&](CTextParm* parm) {
            if (hook == "end") {
                Delete(parm);
            }
        };
        other.SetFocus();
        EXPECT_EQ(row.expected, Take());
        ExpectClosed();
        view.onAccept = nullptr;
        view.onChanging = nullptr;
        view.onChanged = nullptr;
        view.onEnd = nullptr;
        view.ResetVectorView();
    }
}

TEST_F(MisbehavingHost, RefusingAndDeletingAtOnceLeavesABoxThatClosesAtTheNextEnd) {
    EditA();
    view.onAccept = [&](CTextParm* parm, const CString&) {
        Delete(parm);
        return 0;
    };
    view.DoEndEdit();
    EXPECT_TRUE(IsBoxShown());
    view.DoEndEdit();
    EXPECT_EQ(Events{"accept A 7"}, Take());
    ExpectClosed();
}

TEST_F(MisbehavingHost, AnotherKindOfObjectAtTheSameAddressIsNotTakenForTheParameter) {
    EditA();
    CDrawableArray* objs = view.GetDocument()->GetDrawableObjs();
    // Whatever the heap does: a line stands in the list under that very address.
    const auto at = reinterpret_cast<void*>(a);
    view.GetDocument()->DeleteObject(a);
    CKXMemoryManager::Instance()->RemoveMemoryInfo(a, __FILE__, __LINE__);
    static_assert(sizeof(CLine) <= sizeof(CTextParm));
    a->~CTextParm();
    CDrawable* line = new (at) CLine;
    objs->Add(line);
    view.DoEndEdit();
    EXPECT_EQ(Events{}, Take());
    ExpectClosed();
    objs->RemoveAt(objs->GetSize() - 1);
    line->~CDrawable();
    ::operator delete(at);
}

TEST_F(MisbehavingHost, AReloadInsideEachHookIsSurvived) {
    for (int step = 0; step < 5; ++step) {
        SCOPED_TRACE(step);
        Three();
        std::vector<BYTE> bytes = Store();
        const auto reload = [&] { view.LoadFile(bytes.data(), static_cast<unsigned int>(bytes.size())); };
        view.onPre = [&](CTextParm*) {
            if (step == 0) {
                reload();
            }
        };
        view.onAccept = [&](CTextParm*, const CString&) {
            if (step == 1) {
                reload();
            }
            return 1;
        };
        view.onChanging = [&](CTextParm*, const CString&, CString&) {
            if (step == 2) {
                reload();
            }
        };
        view.onChanged = [&](CTextParm*) {
            if (step == 3) {
                reload();
            }
        };
        view.onEnd = [&](CTextParm*) {
            if (step == 4) {
                reload();
            }
        };
        Click(a);
        if (step != 0) {
            Type(L"7");
        }
        other.SetFocus();
        EXPECT_FALSE(IsBoxShown());
        EXPECT_EQ(nullptr, view.EditParm());
        EXPECT_EQ(4, view.GetDocument()->GetDrawableObjs()->GetSize());
        for (INT_PTR i = 0; i < 4; ++i) {
            if (auto* parm = DYNAMIC_DOWNCAST(CTextParm, view.GetDocument()->GetDrawableObjs()->GetAt(i))) {
                EXPECT_NE(L"7", parm->GetText());
            }
        }
        view.onPre = nullptr;
        view.onAccept = nullptr;
        view.onChanging = nullptr;
        view.onChanged = nullptr;
        view.onEnd = nullptr;
        view.ResetVectorView();
        Take();
    }
}

TEST_F(MisbehavingHost, AReloadInsideTheQueryIsSurvived) {
    Three();
    std::vector<BYTE> bytes = Store();
    parent.onNotify = [&](NMVECTORPARM*) {
        parent.onNotify = nullptr;
        view.LoadFile(bytes.data(), static_cast<unsigned int>(bytes.size()));
    };
    Click(a);
    other.SetFocus();
    EXPECT_FALSE(IsBoxShown());
    EXPECT_EQ(4, view.GetDocument()->GetDrawableObjs()->GetSize());
}

TEST_F(MisbehavingHost, AReloadInsideAClickIsSurvived) {
    Three();
    std::vector<BYTE> bytes = Store();
    parent.onNotify = [&](NMVECTORPARM*) { view.LoadFile(bytes.data(), static_cast<unsigned int>(bytes.size())); };
    Click(350, 50);
    Click(450, 200);
    EXPECT_EQ((Events{"click 1", "click 0"}), Take());
}

TEST_F(MisbehavingHost, DeletingTheClickedParameterAtTheEndOfTheOldEditOpensNothing) {
    EditA();
    view.onEnd = [&](CTextParm*) {
        if (IsListed(c)) {
            Delete(c);
        }
    };
    CGePoint2d on = c->GetPos();
    on.x += 6;
    on.y -= 6;
    EXPECT_EQ(1, view.DoEditForClicked(0, on));
    EXPECT_EQ(storedA, Take());
    ExpectClosed();
}

TEST_F(MisbehavingHost, DeletingTheParameterBeforeItOpensOpensNothing) {
    Three();
    view.onPre = [&](CTextParm* parm) { Delete(parm); };
    Click(a);
    EXPECT_EQ(Events{"pre A"}, Take());
    ExpectClosed();
    view.onPre = nullptr;
    parent.onNotify = [&](NMVECTORPARM* record) { Delete(static_cast<CTextParm*>(record->pText)); };
    Click(b);
    ExpectClosed();
}

TEST_F(MisbehavingHost, AMessageBoxInOnAcceptEditDataAsksOnce) {
    for (const bool accepts : {true, false}) {
        EditA();
        BoxAnswer boxes;
        view.onAccept = [&](CTextParm*, const CString&) {
            AfxMessageBox(L"really?");
            return accepts ? 1 : 0;
        };
        Key(VK_RETURN, false);
        if (accepts) {
            EXPECT_EQ(storedA, Take());
            EXPECT_EQ(1u, boxes.Texts().size());
            ExpectClosed();
        } else {
            // The box has taken the focus already when the key gives it to the view.
            EXPECT_EQ(Events{"accept A 7"}, Take());
            EXPECT_EQ(1u, boxes.Texts().size());
            EXPECT_EQ(a, view.EditParm());
            EXPECT_EQ(L"10", a->GetText());
        }
        view.onAccept = nullptr;
        view.ResetVectorView();
        Take();
    }
}

TEST_F(MisbehavingHost, EndingTheEditInsideOnAcceptEditDataIsNoRecursion) {
    EditA();
    view.onAccept = [&](CTextParm*, const CString&) {
        view.DoEndEdit();
        other.SetFocus();
        return 1;
    };
    view.DoEndEdit();
    EXPECT_EQ(storedA, Take());
    ExpectClosed();
}

TEST_F(MisbehavingHost, AResetInsideEachHookIsSurvived) {
    for (int step = 0; step < 4; ++step) {
        SCOPED_TRACE(step);
        EditA();
        view.onAccept = [&](CTextParm*, const CString&) {
            if (step == 0) {
                view.ResetVectorView();
            }
            return 1;
        };
        view.onChanging = [&](CTextParm*, const CString&, CString&) {
            if (step == 1) {
                view.ResetVectorView();
            }
        };
        view.onChanged = [&](CTextParm*) {
            if (step == 2) {
                view.ResetVectorView();
            }
        };
        view.onEnd = [&](CTextParm*) { view.ResetVectorView(); };
        view.DoEndEdit();
        ExpectClosed();
        EXPECT_EQ(0, view.GetDocument()->GetDrawableObjs()->GetSize());
        const Events events = Take();
        EXPECT_EQ("end A", events.back());
        view.onAccept = nullptr;
        view.onChanging = nullptr;
        view.onChanged = nullptr;
        view.onEnd = nullptr;
    }
}

TEST_F(MisbehavingHost, AnEditOpenedInTheLastHookStaysOpen) {
    EditA();
    view.onEnd = [&](CTextParm* parm) {
        if (parm == a) {
            view.EditAt(c, CRect(10, 10, 90, 40));
        }
    };
    view.DoEndEdit();
    EXPECT_EQ((storedA + Events{"pre C", "query C"}), Take());
    ExpectOpenOn(c, L"30");
}

TEST_F(MisbehavingHost, TheSameParameterOpenedAgainInTheLastHookStaysOpen) {
    EditA();
    int times = 0;
    view.onEnd = [&](CTextParm* parm) {
        if (++times == 1) {
            view.EditAt(parm, CRect(10, 10, 90, 40));
        }
    };
    view.DoEndEdit();
    ExpectOpenOn(a, L"7");
}

TEST_F(MisbehavingHost, TheSameParameterOpenedAgainBehindTheStoreStaysOpen) {
    EditA();
    int times = 0;
    view.onChanged = [&](CTextParm* parm) {
        if (++times == 1) {
            view.EditAt(parm, CRect(10, 10, 90, 40));
        }
    };
    view.DoEndEdit();
    // The edit that ended is over; the new one hears of its own end only.
    EXPECT_EQ((Events{"accept A 7", "changing A 10>7", "changed A 10>7", "pre A", "query A"}), Take());
    ExpectOpenOn(a, L"7");
}

TEST_F(MisbehavingHost, AnExceptionFromAHookLeavesTheViewUsable) {
    EditA();
    view.onAccept = [](CTextParm*, const CString&) -> int { AfxThrowUserException(); };
    try {
        view.DoEndEdit();
        FAIL() << "nothing was raised";
    } catch (CUserException* e) {
        e->Delete();
    }
    ExpectOpenOn(a, L"7");
    view.onAccept = nullptr;
    Take();
    view.DoEndEdit();
    EXPECT_EQ(storedA, Take());
}

TEST_F(MisbehavingHost, RemovingEverythingDuringAWalkIsSurvived) {
    EditA();
    view.onPre = [&](CTextParm*) { view.GetDocument()->Reset(); };
    Key(VK_TAB);
    ExpectClosed();
    EXPECT_EQ(0, view.GetDocument()->GetDrawableObjs()->GetSize());
}

TEST_F(MisbehavingHost, EditingNoParameterIsNothing) {
    Three();
    view.EditAt(nullptr, CRect(0, 0, 10, 10));
    EXPECT_EQ(Events{}, Take());
    ExpectClosed();
}

// ---- The view goes -------------------------------------------------------------------------------------------------

TEST_F(MisbehavingHost, DeletingAViewInTheMiddleOfAnEditCallsNoHook) {
    Events lines;
    auto* doomed = new ParmView;
    ASSERT_TRUE(
        doomed->Create(AfxRegisterWndClass(0), L"", WS_CHILD | WS_VISIBLE, CRect(0, 310, 200, 400), &parent, 79));
    doomed->log = &lines;
    auto* parm = static_cast<CTextParm*>(doomed->AddParmText(CGePoint2d(), L"1", L"D", 0, kColor, 20.0, 0));
    doomed->EditAt(parm, CRect(10, 10, 90, 40));
    ASSERT_TRUE(HasFocus(doomed->Edit()));
    lines.clear();
    delete doomed;
    EXPECT_EQ(Events{}, lines);
    Pump();
}

TEST_F(MisbehavingHost, AnEditThatAHookOpensThroughTheWalkGoesOn) {
    EditA();
    view.onEnd = [&](CTextParm* parm) {
        if (parm == a) {
            view.BaseWalk(parm);
        }
    };
    view.DoEndEdit();
    EXPECT_EQ(storedA + openB, Take());
    ExpectOpenOn(b, L"20");
    view.onEnd = nullptr;
    other.SetFocus();
    EXPECT_EQ((Events{"accept B 20", "changing B 20>20", "changed B 20>20", "end B"}), Take());
}

} // namespace
