// What is said about captures and rewrites.
#pragma once

#include "language/phrase.h"

namespace quillmark::phrases {

// Instructions of a new installation.
inline constexpr Phrase correct{"Correct", "교정"};
inline constexpr Phrase shorten{"Shorten", "짧게"};
inline constexpr Phrase friendlier{"Friendlier", "더 친근하게"};
inline constexpr Phrase moreFormal{"More formal", "더 격식 있게"};
inline constexpr Phrase translate{"Translate into …", "번역 …"};
inline constexpr Phrase whichLanguage{"Into which language?", "어느 언어로 번역할까요?"};
inline constexpr Phrase ownWords{"Own words …", "직접 지시 …"};
inline constexpr Phrase whatToDo{"What should be done with the text?", "이 글을 어떻게 고칠까요?"};

// Where a text came from.
inline constexpr Phrase unnamedProgram{"an unnamed program", "이름 없는 프로그램"};
inline constexpr Phrase selection{"Selection", "선택한 글"};
inline constexpr Phrase wholeField{"Whole field", "입력란 전체"};
inline constexpr Phrase fromClipboard{"From the clipboard", "클립보드의 글"};
inline constexpr Phrase ownText{"Typed here", "여기에 쓴 글"};
inline constexpr Phrase oneCharacter{"1 character", "1자"};
inline constexpr Phrase manyCharacters{"%1 characters", "%1자"};
inline constexpr Phrase shortened{"Shortened to the first 3,000 characters", "앞의 3,000자만 읽음"};
inline constexpr Phrase onlyCopied{"Can only be copied", "복사만 가능"};

// How a rewrite stands.
inline constexpr Phrase nothingToRewrite{
    "There was no text to read there. Select some text and press the hot key again.",
    "읽을 글이 없습니다. 글을 선택하고 단축키를 다시 누르세요."};
inline constexpr Phrase tooLong{"The text is too long for this model. Select less of it and try again.",
                                "글이 이 모델에는 너무 깁니다. 더 짧게 선택하고 다시 시도하세요."};
inline constexpr Phrase emptyAnswer{"The model answered nothing. Try again, or choose another instruction.",
                                    "모델이 빈 답을 보냈습니다. 다시 시도하거나 다른 지시를 고르세요."};
inline constexpr Phrase wouldNot{"The model would not do this: %1", "모델이 이 요청을 거절했습니다: %1"};
inline constexpr Phrase needsModel{"Without a language model only “%1” works. %2",
                                   "언어 모델이 없으면 “%1”만 쓸 수 있습니다. %2"};
inline constexpr Phrase modelDeclined{"The model on this computer is not used, as you have chosen.",
                                      "선택하신 대로 이 컴퓨터의 모델은 쓰지 않습니다."};
inline constexpr Phrase pasteBusy{"An earlier text is still being put in. Try again in a moment.",
                                  "앞의 글을 아직 넣는 중입니다. 잠시 뒤 다시 시도하세요."};

// Notices.
inline constexpr Phrase notPutIn{"The rewrite was not put in", "고친 글을 넣지 않았습니다"};
inline constexpr Phrase notRewritten{"The text was not rewritten", "글을 고치지 못했습니다"};
inline constexpr Phrase wentOn{"You went on working in the meantime.",
                               "그사이에 다른 작업을 하고 계셨습니다."};
inline constexpr Phrase refused{
    "The text there has changed. The rewrite is on the clipboard: Ctrl+V pastes it.",
    "그곳의 글이 바뀌었습니다. 고친 글은 클립보드에 있으니 Ctrl+V로 붙여넣으세요."};
inline constexpr Phrase waitsOnClipboard{
    "This program takes no text. The rewrite is on the clipboard: Ctrl+V pastes it.",
    "이 프로그램에는 넣을 수 없습니다. 고친 글은 클립보드에 있으니 Ctrl+V로 붙여넣으세요."};
inline constexpr Phrase askingFirst{
    "A language model was found on this computer. Open the window and say whether it may be used.",
    "이 컴퓨터에서 언어 모델을 찾았습니다. 창을 열어 사용 여부를 정해 주세요."};

} // namespace quillmark::phrases
