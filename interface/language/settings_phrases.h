// What the settings say.
#pragma once

#include "language/phrase.h"

namespace quillmark::phrases {

inline constexpr Phrase add{"Add …", "추가 …"};
inline constexpr Phrase remove{"Remove %1", "%1 지우기"};
inline constexpr Phrase notSaved{"The settings could not be saved: %1. They hold until you quit.",
                                 "설정을 저장할 수 없습니다: %1. 끝낼 때까지만 유지됩니다."};
inline constexpr Phrase help{"Help", "도움말"};

// What the hot key does.
inline constexpr Phrase hotKeyAction{"What the hot key does", "단축키가 하는 일"};
inline constexpr Phrase review{"Show the rewrite first; I apply it", "고친 글을 먼저 보여 주고, 내가 넣기"};
inline constexpr Phrase atOnce{"Put the rewrite in at once, without this window",
                               "이 창 없이 고친 글을 바로 넣기"};
inline constexpr Phrase atOnceExplained{
    "The first instruction below is used. Should you go on typing in the meantime, nothing is put in and a "
    "notice says so.",
    "아래의 첫 번째 지시를 씁니다. 그사이에 글을 계속 쓰면 넣지 않고 알림으로 알려 드립니다."};

// The hot key.
inline constexpr Phrase hotKey{"Hot key", "단축키"};
inline constexpr Phrase changeHotKey{"Change the hot key, now %1", "단축키 바꾸기, 지금은 %1"};
inline constexpr Phrase pressKeys{"Press the new keys, or Esc …", "새 키를 누르세요(취소는 Esc) …"};
inline constexpr Phrase hotKeyUnknown{"This key cannot be the hot key. Try another.",
                                      "이 키는 단축키로 쓸 수 없습니다. 다른 키를 눌러 보세요."};
inline constexpr Phrase hotKeyHeld{"Another program holds %1, so %2 stays the hot key.",
                                   "다른 프로그램이 %1 키를 쓰고 있어 단축키는 그대로 %2입니다."};
inline constexpr Phrase hotKeyNeedsModifier{
    "Hold Ctrl, Alt or Super with the key: it would be missed wherever you write, otherwise.",
    "Ctrl, Alt, Super 중 하나를 함께 누르세요. 그러지 않으면 글을 쓸 때 그 키를 쓸 수 없게 됩니다."};
inline constexpr Phrase hotKeyOfDesktop{
    "Many desktops use this combination themselves; then only one of the two works.",
    "많은 데스크톱이 이 조합을 사용합니다. 그럴 때는 둘 중 하나만 작동합니다."};
inline constexpr Phrase hotKeyOfPrograms{
    "Programs use this combination themselves; as long as it is the hot key, they do not get it.",
    "프로그램들이 이 조합을 사용합니다. 단축키로 쓰는 동안에는 프로그램에 전달되지 않습니다."};

// The language model.
inline constexpr Phrase languageModel{"Language model", "언어 모델"};
inline constexpr Phrase letModelHaveTexts{"Let this model have my texts", "이 모델에 글을 보내기"};
inline constexpr Phrase findServer{"Use a server that runs on this computer, found by itself",
                                   "이 컴퓨터에서 실행 중인 서버를 자동으로 찾아 쓰기"};
inline constexpr Phrase chooseServer{"Use this server:", "이 서버 쓰기:"};
inline constexpr Phrase serverAddress{"Address", "주소"};
inline constexpr Phrase serverModel{"Model", "모델"};
inline constexpr Phrase serverModelEmpty{"the first that can answer", "답할 수 있는 첫 번째 모델"};
inline constexpr Phrase serverKey{"Access key", "접근 키"};
inline constexpr Phrase serverKeyEmpty{"none", "없음"};
inline constexpr Phrase serverKeyKept{"kept as it is", "그대로 둠"};
inline constexpr Phrase useServer{"Use this server", "이 서버 쓰기"};
inline constexpr Phrase lookingForServer{"Looking …", "찾는 중 …"};
inline constexpr Phrase lookAgain{"Look again", "다시 찾기"};
inline constexpr Phrase otherServers{"Where was it looked for?", "어디에서 찾았나요?"};

// Instructions.
inline constexpr Phrase instructionsExplained{
    "The first one is what the hot key does. Their keys work in the window.",
    "첫 번째 지시가 단축키를 누를 때 쓰입니다. 지시의 키는 이 창에서 작동합니다."};
inline constexpr Phrase moveUp{"Move %1 up", "%1 위로"};
inline constexpr Phrase moveDown{"Move %1 down", "%1 아래로"};
inline constexpr Phrase editInstruction{"Edit %1", "%1 고치기"};
inline constexpr Phrase newInstruction{"New instruction", "새 지시"};
inline constexpr Phrase standardInstructions{"Back to the original ones", "처음 지시로 되돌리기"};
inline constexpr Phrase instructionName{"Name", "이름"};
inline constexpr Phrase instructionPrompt{"What the model is told", "모델에 전할 지시"};
inline constexpr Phrase instructionQuestion{"Asked before each use; {} above stands for the answer",
                                            "쓸 때마다 물어볼 것(위의 {} 자리에 답이 들어갑니다)"};
inline constexpr Phrase instructionKey{"Key", "키"};
inline constexpr Phrase noKey{"none", "없음"};
inline constexpr Phrase changeKey{"Change the key, now %1", "키 바꾸기, 지금은 %1"};
inline constexpr Phrase removeKey{"No key", "키 없애기"};
inline constexpr Phrase correctsSpelling{"Without a model, correct the spelling instead",
                                         "모델이 없으면 맞춤법만 고치기"};
inline constexpr Phrase save{"Save", "저장"};
inline constexpr Phrase instructionIncomplete{"An instruction needs a name, and words for the model.",
                                              "지시에는 이름과 모델에 전할 말이 있어야 합니다."};
inline constexpr Phrase keyOfWindow{"The window itself uses %1. Choose another key.",
                                    "%1 키는 이 창에서 이미 쓰고 있습니다. 다른 키를 고르세요."};
inline constexpr Phrase keyOfInstruction{"“%2” has the key %1 already. Choose another key.",
                                         "%1 키는 “%2”에 이미 쓰고 있습니다. 다른 키를 고르세요."};
inline constexpr Phrase keyTypes{"%1 is needed for writing. Hold Ctrl or Alt with it.",
                                 "%1 키는 글을 쓸 때 필요합니다. Ctrl이나 Alt와 함께 누르세요."};

// Excluded programs.
inline constexpr Phrase excludedPrograms{"Excluded programs", "제외한 프로그램"};
inline constexpr Phrase excludedExplained{"There the hot key only beeps and nothing is read.",
                                          "여기서는 단축키를 눌러도 소리만 나고 글을 읽지 않습니다."};
inline constexpr Phrase noneExcluded{"None", "없음"};
inline constexpr Phrase searchProgram{"Search", "찾기"};
inline constexpr Phrase usedLately{"used lately", "최근에 씀"};

// The rest.
inline constexpr Phrase general{"General", "일반"};
inline constexpr Phrase languageOfWindow{"Language", "언어"};
inline constexpr Phrase likeTheDesktop{"Like the desktop", "데스크톱과 같게"};
inline constexpr Phrase startAtLogin{"Start when I log in", "로그인할 때 시작"};
inline constexpr Phrase showStatusIcon{"Show an icon among those of the desktop",
                                       "데스크톱의 상태 표시줄에 아이콘 표시"};
inline constexpr Phrase noPlaceForIcon{"This desktop has no place for such icons.",
                                       "이 데스크톱에는 아이콘을 표시할 곳이 없습니다."};

} // namespace quillmark::phrases
