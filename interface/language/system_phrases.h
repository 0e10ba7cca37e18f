// What is said outside the window, in notices, the status icon and the host's menu, and of the host itself.
#pragma once

#include "language/phrase.h"

namespace quillmark::phrases {

inline constexpr Phrase showWindow{"Show", "창 열기"};
inline constexpr Phrase copyRewrite{"Copy", "복사"};

inline constexpr Phrase pauseHotKey{"Pause or resume the hot key", "단축키 멈추기 또는 다시 쓰기"};
inline constexpr Phrase settingsMenu{"Settings …", "설정 …"};
inline constexpr Phrase quitMenu{"Quit", "끝내기"};

inline constexpr Phrase settingsSetAsideTitle{"The settings could not be read", "설정을 읽을 수 없습니다"};
inline constexpr Phrase settingsSetAside{"Quillmark starts with new ones. The old file is kept as %1.",
                                         "새 설정으로 시작합니다. 이전 파일은 %1(으)로 남겨 두었습니다."};
inline constexpr Phrase stillRunningTitle{"Quillmark goes on running", "Quillmark는 계속 실행 중입니다"};
inline constexpr Phrase stillRunning{
    "The hot key still works. The status icon brings the window back and quits.",
    "단축키는 계속 쓸 수 있습니다. 상태 아이콘에서 창을 다시 열거나 끝낼 수 있습니다."};

inline constexpr Phrase hostNotFound{"The host's own program could not be run: %1",
                                     "호스트 프로그램을 실행할 수 없습니다: %1"};
inline constexpr Phrase tookTooLong{"it did not answer in time. Try again.",
                                    "제때 답하지 않았습니다. 다시 해 보세요."};

// The host's menu (docs/channels.md, localize), by the keys of its items.
struct MenuLabel {
    const char* key;
    Phrase label;
};
inline constexpr MenuLabel menuLabels[]{
    {"nativeApplication", {"Quillmark", "Quillmark"}},
    {"nativeAbout", {"About Quillmark", "Quillmark 정보"}},
    {"nativeQuit", {"Quit Quillmark", "Quillmark 끝내기"}},
    {"nativeEdit", {"Edit", "편집"}},
    {"nativeUndo", {"Undo", "실행 취소"}},
    {"nativeRedo", {"Redo", "다시 실행"}},
    {"nativeCut", {"Cut", "잘라내기"}},
    {"nativeCopy", {"Copy", "복사"}},
    {"nativePaste", {"Paste", "붙여넣기"}},
    {"nativeSelectAll", {"Select All", "모두 선택"}},
    {"nativeView", {"View", "보기"}},
    {"nativeFullScreen", {"Full Screen", "전체 화면"}},
    {"nativeExitFullScreen", {"Leave Full Screen", "전체 화면 끝내기"}},
    {"nativeWindow", {"Window", "창"}},
    {"nativeMinimize", {"Minimize", "최소화"}},
    {"nativeZoom", {"Zoom", "확대/축소"}},
    {"nativeHelp", {"Help", "도움말"}},
    {"nativeShowHelp", {"Quillmark Help", "Quillmark 도움말"}},
    {"tooltip", {"Quillmark", "글빛나래 · Quillmark"}},
};

} // namespace quillmark::phrases
