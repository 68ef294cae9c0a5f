#!/bin/bash
# The layer's headers under a host's own compiler flags: -Wall -Wextra gives no warning for message maps and class records,
# and a build without Unicode is refused.
cd "$(dirname "${BASH_SOURCE[0]}")/../.." || exit 1
compile() { x86_64-w64-mingw32-g++-posix -std=c++17 -fsyntax-only -Iafx -Itests -isystem /usr/src/googletest/googletest/include "$@" 2>&1; }
code=0
complain() { echo "$1"; code=1; }

host='
#include <afxcmn.h>
#include <afxdisp.h>
#include <afxdlgs.h>
#include <afxext.h>
class Stored : public CObject { DECLARE_SERIAL(Stored) };
IMPLEMENT_SERIAL(Stored, CObject, VERSIONABLE_SCHEMA | 1)
class Host : public CWnd {
    afx_msg void OnCommandRange(UINT) {}
    afx_msg BOOL OnEx(UINT) { return TRUE; }
    afx_msg void OnUpdate(CCmdUI*) {}
    afx_msg void OnControl() {}
    afx_msg BOOL OnControlEx() { return TRUE; }
    afx_msg void OnNotice(NMHDR*, LRESULT*) {}
    afx_msg BOOL OnNoticeEx(NMHDR*, LRESULT*) { return TRUE; }
    afx_msg void OnNoticeRange(UINT, NMHDR*, LRESULT*) {}
    afx_msg BOOL OnNoticeExRange(UINT, NMHDR*, LRESULT*) { return TRUE; }
    DECLARE_MESSAGE_MAP()
};
BEGIN_MESSAGE_MAP(Host, CWnd)
    ON_COMMAND_RANGE(1, 2, &Host::OnCommandRange)
    ON_COMMAND_EX_RANGE(1, 2, &Host::OnEx)
    ON_UPDATE_COMMAND_UI_RANGE(1, 2, &Host::OnUpdate)
    ON_CONTROL_RANGE(BN_CLICKED, 1, 2, &Host::OnCommandRange)
    ON_CONTROL_REFLECT(EN_CHANGE, &Host::OnControl)
    ON_CONTROL_REFLECT_EX(EN_CHANGE, &Host::OnControlEx)
    ON_NOTIFY(NM_CLICK, 1, &Host::OnNotice)
    ON_NOTIFY_EX(NM_CLICK, 1, &Host::OnNoticeExRange)
    ON_NOTIFY_RANGE(NM_CLICK, 1, 2, &Host::OnNoticeRange)
    ON_NOTIFY_EX_RANGE(NM_CLICK, 1, 2, &Host::OnNoticeExRange)
    ON_NOTIFY_REFLECT(NM_CLICK, &Host::OnNotice)
    ON_NOTIFY_REFLECT_EX(NM_CLICK, &Host::OnNoticeEx)
END_MESSAGE_MAP()
'
warnings=$(compile -DUNICODE -D_UNICODE -Wall -Wextra -Werror -x c++ - <<<"$host") ||
    complain "a host with -Wall -Wextra gets warnings: $warnings"
# The rows of all window messages.
warnings=$(compile -DUNICODE -D_UNICODE -Wall -Wextra -Werror tests/afx_msgmap_test.cpp) ||
    complain "message maps bring warnings under -Wall -Wextra: $warnings"

# A host that casts a member pointer of its own is still warned.
compile -DUNICODE -D_UNICODE -Wall -Wextra -Werror -x c++ - <<<"$host
typedef int (CWnd::*Other)(int);
Other other = (Other)&CWnd::Invalidate;" >/dev/null && complain "the headers switch a host's own warnings off"

for half in -DNONE -DUNICODE -D_UNICODE; do
    refusal=$(compile $half -x c++ - <<<'#include <afxwin.h>') && complain "a build with $half alone is not refused"
    [[ $refusal == *'#error'*UNICODE* ]] || complain "a build with $half alone is not told about Unicode"
done
exit $code
