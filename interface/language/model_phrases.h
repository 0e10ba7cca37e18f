// What is said about the language model.
#pragma once

#include "language/phrase.h"

namespace quillmark::phrases {

inline constexpr Phrase lookingForModel{"Looking for a language model …", "언어 모델을 찾는 중 …"};
inline constexpr Phrase noModel{
    "Spelling only. Start a model server such as Ollama, or choose one in the settings.",
    "맞춤법만 고칩니다. Ollama 같은 모델 서버를 켜거나 설정에서 고르세요."};
inline constexpr Phrase notUsed{"Spelling only. %1 is not used, as you have chosen.",
                                "맞춤법만 고칩니다. 선택하신 대로 %1 모델은 쓰지 않습니다."};
inline constexpr Phrase unnamedModel{"A language model", "언어 모델"};
inline constexpr Phrase modelHere{"%1, on this computer (%2)", "%1, 이 컴퓨터 (%2)"};
inline constexpr Phrase modelElsewhere{"%1, at %2 (encrypted)", "%1, %2 (암호화)"};

} // namespace quillmark::phrases
