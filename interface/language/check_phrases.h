// What the page says that shows what Quillmark needs on this desktop.
#pragma once

#include "language/phrase.h"

#include <array>
#include <string_view>

namespace quillmark::phrases {

inline constexpr Phrase checkTitle{"What Quillmark needs", "Quillmark에 필요한 것"};
inline constexpr Phrase check{"Check what Quillmark needs …", "필요한 것이 갖추어졌는지 살펴보기 …"};
inline constexpr Phrase checking{"Looking at this desktop …", "데스크톱을 살펴보는 중 …"};
inline constexpr Phrase checkAgain{"Look again", "다시 살펴보기"};
inline constexpr Phrase copyReport{"Copy for a report", "신고용으로 복사"};
inline constexpr Phrase reportCopied{
    "The report is on the clipboard. It names programs and folders of yours, and no text.",
    "신고할 내용이 클립보드에 있습니다. 프로그램과 폴더의 이름은 들어 있고, 쓰신 글은 없습니다."};
inline constexpr Phrase allGood{"Nothing is missing.", "모두 갖추어져 있습니다."};
inline constexpr Phrase notAllGood{"Missing: %1, degraded: %2", "없음: %1, 부족함: %2"};

// In the order of Grade.
inline constexpr std::array grades{Phrase{"good", "좋음"}, Phrase{"degraded", "부족함"},
                                   Phrase{"missing", "없음"}};

// What the host finds, as it says so; %1 and %2 are names, numbers and folders.
inline constexpr std::array facts{
    Phrase{"X11 on %1, %2 pixels", "X11 %1, %2 픽셀"},
    Phrase{"runs (process %1) with %2", "실행 중(프로세스 %1): %2"},
    Phrase{"does not run now", "지금은 실행되지 않음"},
    Phrase{"runs but does not answer", "실행 중이지만 답하지 않음"},
    Phrase{"runs, of another version", "다른 버전이 실행 중"},
    Phrase{"none", "없음"},
    Phrase{"answers", "답함"},
    Phrase{"does not answer", "답하지 않음"},
    Phrase{"no accessibility bus", "접근성 버스가 없음"},
    Phrase{"switched on", "켜져 있음"},
    Phrase{"switched off", "꺼져 있음"},
    Phrase{"%1 is the host's", "%1: Quillmark가 씀"},
    Phrase{"%1 is free", "%1: 쓸 수 있음"},
    Phrase{"%1, paused", "%1: 일시 중지됨"},
    Phrase{"%1 belongs to another program", "%1: 다른 프로그램이 씀"},
    Phrase{"%1 belongs to %2", "%1: %2에서 씀"},
    Phrase{"%1, of which the keyboard's layout switch takes a part (%2)", "%1: 자판 전환 키와 겹침(%2)"},
    Phrase{"an X server without the extension %1", "X 서버에 확장 %1이(가) 없음"},
    Phrase{"none that the host can use", "쓸 수 있는 것이 없음"},
    Phrase{"none that can be started", "시작할 수 있는 것이 없음"},
    Phrase{"one without a name", "이름이 없음"},
    Phrase{"no folder for the socket: %1", "소켓을 둘 폴더가 없음: %1"},
    Phrase{"one runs", "하나가 실행 중"},
    Phrase{"none answers", "답하는 모델이 없음"},
    Phrase{"%1 at %2, on this computer", "%1, %2(이 컴퓨터)"},
    Phrase{"%1 at %2, on another computer", "%1, %2(다른 컴퓨터)"},
    Phrase{"%1 cannot be written to", "%1: 쓸 수 없음"},
    Phrase{"%1 can be written to by others", "%1: 다른 사용자가 바꿀 수 있음"},
};

// One thing that is needed, under the host's name for it. The host says in English what it means when it is
// not there; `explained` says so in Korean.
struct Need {
    std::string_view name;
    Phrase title;
    const char* explained;
};

inline constexpr std::array needs{
    Need{"display-server",
         {"Display server", "화면 서버"},
         "X 서버를 쓸 수 없으면 시작되지 않습니다. X11(Xorg) 세션으로 로그인하세요."},
    Need{"host",
         {"Quillmark itself", "Quillmark"},
         "실행 중인 Quillmark가 답하지 않습니다. 끝내고 다시 시작하세요."},
    Need{"window-manager",
         {"Window manager", "창 관리자"},
         "프로그램을 앞으로 가져오지 못하는 창 관리자에서는 고친 글이 클립보드에서 기다립니다. "
         "다른 창 관리자를 쓰세요."},
    Need{"session-bus",
         {"Session bus", "세션 버스"},
         "다른 프로그램의 글을 읽을 수 없습니다. 데스크톱 세션으로 로그인하세요."},
    Need{"accessibility",
         {"Accessibility", "접근성"},
         "다른 프로그램의 글을 읽을 수 없습니다. at-spi2-core를 설치하고, 먼저 실행되던 프로그램은 다시 "
         "시작하세요."},
    Need{"hot-key",
         {"Hot key", "단축키"},
         "단축키를 눌러도 글을 가져오지 못할 수 있습니다. 설정에서 다른 키를 고르거나, 데스크톱의 단축키로 "
         "quillmark-host --capture를 실행하세요."},
    Need{"clipboard-manager",
         {"Clipboard manager", "클립보드 관리자"},
         "Quillmark를 끝내면 클립보드에 넣은 글이 사라집니다. 클립보드 관리자를 설치하고 로그인할 때 "
         "시작되게 하세요."},
    Need{"language-model",
         {"Language model", "언어 모델"},
         "맞춤법만 고칩니다. 이 컴퓨터에서 언어 모델 서버를 시작하거나, 설정에서 서버를 고르세요."},
    Need{"interface",
         {"This window", "이 창"},
         "이 창의 프로그램을 시작할 수 없습니다. Quillmark를 다시 설치하세요."},
    Need{"files",
         {"Files", "파일"},
         "설정과 창의 위치를 저장할 수 없거나, 다른 사람이 바꿀 수 있습니다. 폴더의 권한을 살펴보세요."},
};

} // namespace quillmark::phrases
