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

TEST_F(MisbehavingHost, AParameterThatWasOnlyTakenOutOfTheDrawingIsNotChanged) {
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
    // Made in place, so that a line is in the list at that address.
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

TEST_F(MisbehavingHost, EndingTheEditInsideOnAcceptEditDataIsIgnored) {
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

TEST_F(MisbehavingHost, TheSameParameterOpenedAgainAfterTheStoreStaysOpen) {
    EditA();
    int times = 0;
    view.onChanged = [&](CTextParm* parm) {
        if (++times == 1) {
            view.EditAt(parm, CRect(10, 10, 90, 40));
        }
    };
    view.DoEndEdit();
    // The edit that ended calls no more hooks; the new one calls those of its own end only.
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

// ---- A new drawing under the edit ----------------------------------------------------------------------------------

// The ways in which a host frees objects without a call to the view. A new parameter is then made in place, at the
// address of an old one.
struct NewDrawing : MisbehavingHost {
    std::vector<BYTE> bytes; // A stored drawing.
    CTextParm* made = nullptr;

    using Way = void (NewDrawing::*)();
    void ByReset() { view.GetDocument()->Reset(); }
    void ByBytes() { view.GetDocument()->OpenDocument(bytes.data(), static_cast<unsigned int>(bytes.size())); }
    void ByFile() {
        CMemFile file;
        file.Write(bytes.data(), static_cast<UINT>(bytes.size()));
        view.GetDocument()->OpenDocument(file);
    }
    void ByLoadFile() { view.LoadFile(bytes.data(), static_cast<unsigned int>(bytes.size())); }
    // The host frees the one object alone.
    void ByNothing() {}
    static constexpr Way kWays[] = {&NewDrawing::ByReset, &NewDrawing::ByBytes, &NewDrawing::ByFile,
                                    &NewDrawing::ByLoadFile, &NewDrawing::ByNothing};

    void Replace(CTextParm* old, Way way) {
        view.GetDocument()->DeleteObject(old);
        CKXMemoryManager::Instance()->RemoveMemoryInfo(old, __FILE__, __LINE__);
        const auto at = reinterpret_cast<void*>(old);
        old->~CTextParm();
        (this->*way)();
        made = new (at) CTextParm;
        CKXMemoryManager::Instance()->AddMemoryInfo(made, __FILE__, __LINE__);
        made->SetParmName(L"N");
        made->SetText(L"new");
        view.GetDocument()->AddDrawAobject(made);
    }
    // Calls `replace` once, in the hook of that name.
    void ReplaceIn(const std::string& hook, const std::function<void()>& replace) {
        const auto call = [=](const char* name) {
            if (hook == name && made == nullptr) {
                replace();
            }
        };
        view.onPre = [=](CTextParm*) { call("pre"); };
        parent.onNotify = [=](NMVECTORPARM* record) { call(record->code == kVpnQueryEdit ? "query" : ""); };
        view.onAccept = [=](CTextParm*, const CString&) {
            call("accept");
            return 1;
        };
        view.onChanging = [=](CTextParm*, const CString&, CString&) { call("changing"); };
        view.onChanged = [=](CTextParm*) { call("changed"); };
        view.onEnd = [=](CTextParm*) { call("end"); };
    }
    void ExpectClosedAndNothingStored() {
        ExpectClosed();
        ASSERT_NE(nullptr, made);
        EXPECT_EQ(L"new", made->GetText());
        made = nullptr;
        ReplaceIn("", nullptr);
        view.ResetVectorView();
        Take();
    }
};

constexpr NewDrawing::Way NewDrawing::kWays[];

TEST_F(NewDrawing, AnOpenEditStoresNothingIntoAParameterAtTheSameAddress) {
    for (const Way way : kWays) {
        EditA();
        bytes = Store();
        Replace(a, way);
        other.SetFocus();
        EXPECT_EQ(Events{}, Take());
        ExpectClosedAndNothingStored();
    }
}

TEST_F(NewDrawing, InsideEachHookOfAnEndTheEditClosesThere) {
    for (const Way way : kWays) {
        Events expected;
        for (const std::string hook : {"accept", "changing", "changed", "end"}) {
            SCOPED_TRACE(hook);
            EditA();
            bytes = Store();
            ReplaceIn(hook, [=] { Replace(a, way); });
            other.SetFocus();
            // Up to the hook itself, and none after it.
            expected.push_back(storedA[expected.size()]);
            EXPECT_EQ(expected, Take());
            ExpectClosedAndNothingStored();
        }
    }
}

TEST_F(NewDrawing, BeforeTheBoxOpensItOpensNothing) {
    for (const Way way : kWays) {
        Events expected;
        for (const std::string hook : {"pre", "query"}) {
            SCOPED_TRACE(hook);
            Three();
            bytes = Store();
            ReplaceIn(hook, [=] { Replace(a, way); });
            Click(a);
            expected.push_back(hook + " A");
            EXPECT_EQ(expected, Take());
            ExpectClosedAndNothingStored();
        }
    }
}

TEST_F(NewDrawing, AtTheEndOfAnEditTheOneThatWasToFollowDoesNotOpen) {
    for (const Way way : kWays) {
        for (const bool clicked : {true, false}) {
            EditA();
            bytes = Store();
            ReplaceIn("end", [=] { Replace(c, way); });
            if (clicked) {
                CGePoint2d on = c->GetPos();
                on.x += 6;
                on.y -= 6;
                EXPECT_EQ(1, view.DoEditForClicked(0, on));
            } else {
                view.EditAt(c, CRect(10, 10, 90, 40));
            }
            EXPECT_EQ(storedA, Take());
            ExpectClosedAndNothingStored();
        }
    }
}

TEST_F(NewDrawing, AResetOfTheViewCallsNoHookForTheOldOne) {
    EditA();
    Replace(a, &NewDrawing::ByReset);
    made = nullptr;
    view.ResetVectorView();
    EXPECT_EQ(Events{}, Take());
    ExpectClosed();
}

TEST_F(NewDrawing, OfAThousandNewParametersNoneGetsTheText) {
    EditA();
    view.GetDocument()->Reset();
    for (int i = 0; i < 1000; ++i) {
        AddParm(L"N", L"1", 50, 50);
    }
    view.DoEndEdit();
    EXPECT_EQ(Events{}, Take());
    ExpectClosed();
    CDrawableArray* objs = view.GetDocument()->GetDrawableObjs();
    ASSERT_EQ(1000, objs->GetSize());
    for (INT_PTR i = 0; i < 1000; ++i) {
        ASSERT_EQ(L"1", static_cast<CTextParm*>(objs->GetAt(i))->GetText());
    }
}

TEST_F(NewDrawing, AnyOtherChangeOfTheDrawingLeavesTheEditAlone) {
    EditA();
    view.AddNetLine(CGePoint2d(0, 0), CGePoint2d(1, 1), kColor, 0);
    view.GetDocument()->DeleteNet();
    view.GetDocument()->MoveToTop(a);
    view.GetDocument()->AddSelected(c);
    view.GetDocument()->DeleteAllSelectedObject();
    Delete(c);
    Delete(b);
    other.SetFocus();
    EXPECT_EQ(storedA, Take());
}

// ---- A parameter that the host keeps itself ------------------------------------------------------------------------

TEST_F(MisbehavingHost, AParameterOutsideTheDrawingIsEditedLikeAnyOther) {
    CTextParm own;
    own.SetParmName(L"H");
    own.SetText(L"5");
    for (const bool reset : {false, true}) {
        view.EditAt(&own, CRect(10, 10, 90, 40));
        EXPECT_EQ((Events{"pre H", "query H"}), Take());
        ExpectOpenOn(&own, own.GetText());
        Type(L"9");
        if (reset) {
            // It was never in the drawing, so it is not freed with it.
            view.GetDocument()->Reset();
        }
        other.SetFocus();
        const std::string old = reset ? "9" : "5";
        EXPECT_EQ((Events{"accept H 9", "changing H " + old + ">9", "changed H " + old + ">9", "end H"}), Take());
        EXPECT_EQ(L"9", own.GetText());
        ExpectClosed();
    }
    view.EditAt(&own, CRect(10, 10, 90, 40));
    Take();
    view.ResetVectorView();
    EXPECT_EQ(Events{"end H"}, Take());
}

TEST_F(MisbehavingHost, AParameterOutsideTheDrawingThatIsFreedStoresNothing) {
    for (const bool reset : {false, true}) {
        auto* own = new CTextParm;
        own->SetParmName(L"H");
        own->SetText(L"5");
        view.EditAt(own, CRect(10, 10, 90, 40));
        Take();
        delete own;
        if (reset) {
            view.ResetVectorView();
        } else {
            view.DoEndEdit();
        }
        EXPECT_EQ(Events{}, Take());
        ExpectClosed();
    }
}

TEST_F(MisbehavingHost, AParameterAddedToTheDrawingDuringTheEditAndTakenOutAgainIsNotChanged) {
    CTextParm own;
    own.SetParmName(L"H");
    own.SetText(L"5");
    view.EditAt(&own, CRect(10, 10, 90, 40));
    view.GetDocument()->AddDrawAobject(&own);
    view.onAccept = [](CTextParm*, const CString&) { return 0; };
    view.DoEndEdit();
    view.onAccept = nullptr;
    Take();
    view.GetDocument()->DeleteObject(&own);
    view.DoEndEdit();
    EXPECT_EQ(Events{}, Take());
    ExpectClosed();
}

TEST_F(MisbehavingHost, EditingNoParameterIsNothing) {
    Three();
    view.EditAt(nullptr, CRect(0, 0, 10, 10));
    EXPECT_EQ(Events{}, Take());
    ExpectClosed();
}

// ---- The view is deleted -------------------------------------------------------------------------------------------

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
