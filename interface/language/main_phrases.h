// What the main view and the first page say.
#pragma once

#include "language/phrase.h"

namespace quillmark::phrases {

// Headings and actions.
inline constexpr Phrase original{"Original", "원문"};
inline constexpr Phrase rewritten{"Rewrite", "고친 글"};
inline constexpr Phrase apply{"Apply", "넣기"};
inline constexpr Phrase copyAndHide{"Copy and hide", "복사하고 숨기기"};
inline constexpr Phrase copy{"Copy", "복사"};
inline constexpr Phrase stop{"Stop", "멈춤"};
inline constexpr Phrase again{"Again", "다시"};
inline constexpr Phrase undo{"Undo", "되돌리기"};
inline constexpr Phrase settings{"Settings", "설정"};
inline constexpr Phrase history{"History", "기록"};
inline constexpr Phrase back{"Back", "뒤로"};
inline constexpr Phrase go{"Go", "실행"};
inline constexpr Phrase instructions{"Instructions", "지시"};

// How it stands.
inline constexpr Phrase rewriting{"Rewriting …", "고치는 중 …"};
inline constexpr Phrase oneChange{"1 change", "1곳 고침"};
inline constexpr Phrase manyChanges{"%1 changes", "%1곳 고침"};
inline constexpr Phrase noChange{"Nothing to change", "고칠 곳이 없습니다"};
inline constexpr Phrase allNew{"Written anew, so no changes are marked",
                               "새로 쓴 글이라 고친 곳을 표시하지 않습니다"};
inline constexpr Phrase marksExplained{"Words that went are struck through, new ones are underlined.",
                                       "빠진 말에는 취소선, 새로운 말에는 밑줄이 있습니다."};
inline constexpr Phrase wasCopied{"Copied", "복사했습니다"};
inline constexpr Phrase askConsent{"A language model was found on this computer: %1. May it have your texts?",
                                   "이 컴퓨터에서 언어 모델을 찾았습니다: %1. 글을 이 모델에 보내도 될까요?"};
inline constexpr Phrase useModel{"Use it", "사용"};
inline constexpr Phrase spellingOnly{"Spelling only", "맞춤법만"};
inline constexpr Phrase standsThere{"The rewrite stands where the original was.",
                                    "원문이 있던 자리에 고친 글을 넣었습니다."};
inline constexpr Phrase refusedInWords{
    "The text there has changed in the meantime, so nothing was put in. The rewrite is on the clipboard: "
    "Ctrl+V pastes it.",
    "그사이에 그곳의 글이 바뀌어 넣지 않았습니다. 고친 글은 클립보드에 있으니 Ctrl+V로 붙여넣으세요."};
inline constexpr Phrase onClipboard{"The rewrite is on the clipboard: Ctrl+V pastes it.",
                                    "고친 글은 클립보드에 있습니다. Ctrl+V로 붙여넣으세요."};
inline constexpr Phrase originalIsBack{"The original is back in its place.", "원문을 제자리에 되돌렸습니다."};
inline constexpr Phrase originalOnClipboard{
    "The original could not be put back from here. It is on the clipboard: Ctrl+V pastes it.",
    "여기서는 원문을 되돌릴 수 없습니다. 원문은 클립보드에 있으니 Ctrl+V로 붙여넣으세요."};
inline constexpr Phrase wasStopped{
    "Stopped. What had come until then is below; “Again” starts anew.",
    "멈췄습니다. 그때까지의 글은 아래에 있습니다. “다시”를 누르면 처음부터 고칩니다."};

// The first page.
inline constexpr Phrase welcome{"Welcome to Quillmark", "Quillmark에 오신 것을 환영합니다"};
inline constexpr Phrase ready{"Quillmark is ready", "Quillmark가 준비되었습니다"};
inline constexpr Phrase firstStep{
    "Select text in any program, or nothing for the whole field.",
    "아무 프로그램에서나 글을 선택하세요. 선택하지 않으면 입력란 전체를 읽습니다."};
inline constexpr Phrase secondStep{"Press %1. Quillmark reads the text and rewrites it.",
                                   "%1 키를 누르면 글을 읽어 고칩니다."};
inline constexpr Phrase thirdStep{"Look it over and press %1: it takes the place of the old text.",
                                  "살펴본 뒤 %1 키를 누르면 원래 글 자리에 들어갑니다."};
inline constexpr Phrase thirdStepAtOnce{"It takes the place of the old text, without this window.",
                                        "이 창 없이 바로 원래 글 자리에 들어갑니다."};
inline constexpr Phrase privacy{"Your texts go to the language model and nowhere else, and are never stored.",
                                "글은 언어 모델에만 전달되며 저장되지 않습니다."};
inline constexpr Phrase tryHere{"Try it on a text of your own:", "직접 써서 시험해 보세요:"};
inline constexpr Phrase sample{"i recieved teh proofs on monday , thank you .\nalot of it reads well.",
                               "i recieved teh proofs on monday , thank you .\nalot of it reads well."};
inline constexpr Phrase tryIt{"Try it", "시험하기"};
inline constexpr Phrase hotKeyTaken{
    "Another program holds %1, so it does nothing here. Choose another hot key in the settings.",
    "다른 프로그램이 %1 키를 쓰고 있어 작동하지 않습니다. 설정에서 다른 단축키를 고르세요."};

// Quitting and closing.
inline constexpr Phrase quitUnfinished{"There is a rewrite that you have not used yet. Quit all the same?",
                                       "아직 쓰지 않은 글이 있습니다. 그래도 끝낼까요?"};
inline constexpr Phrase quitNow{"Quit", "끝내기"};
inline constexpr Phrase stay{"Stay", "계속하기"};
inline constexpr Phrase closeOrQuit{"Close the window and keep the hot key working, or quit?",
                                    "창만 닫고 단축키를 계속 쓸까요, 아니면 끝낼까요?"};
inline constexpr Phrase hide{"Hide the window", "창 숨기기"};

// History.
inline constexpr Phrase historyEmpty{
    "Nothing yet. What you rewrite is listed here until you quit; it is never stored.",
    "아직 없습니다. 고친 글은 끝낼 때까지만 여기에 있으며 저장되지 않습니다."};
inline constexpr Phrase clearHistory{"Forget all", "모두 지우기"};

} // namespace quillmark::phrases
