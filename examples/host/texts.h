#pragma once

namespace zelvora::examples {

/// What the app says to its user.
struct Texts {
    char const* appName;
    char const* headerNote;
    char const* leave;
    char const* footerNote;

    char const* greeting;
    char const* greetingMore;
    char const* open;
    char const* push;
    char const* pushNote;
    char const* upload;
    char const* waiting;
    char const* uploading;
    char const* developer;
    char const* developerNote;
    char const* told;
    char const* openingTime;
    char const* pages;
    char const* queue;
    char const* nothing;

    char const* loading;
    char const* failure;
    char const* failureMore;
    char const* tryAgain;
    char const* back;
};

/// Korean or English, as the user's language is.
[[nodiscard]] Texts const& texts();

/// That language, as the engine is told it: "ko-KR" or "en-US".
[[nodiscard]] char const* languageTag();

}
