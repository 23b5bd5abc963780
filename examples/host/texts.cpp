#include "examples/host/texts.h"

#include <glib.h>

#include <string_view>

namespace zelvora::examples {

namespace {

constexpr Texts korean {
    .appName = "예제 앱",
    .headerNote = "앱이 만든 머리글",
    .leave = "쇼핑 닫기",
    .footerNote = "앱이 만든 바닥글 · 페이지가 숨길 수 있어요",

    .greeting = "오늘의 쇼핑",
    .greetingMore = "손으로 만든 물건을 앱 안에서 바로 만나 보세요.",
    .open = "쇼핑하기",
    .push = "화면 스택에 열기",
    .pushNote = "왼쪽 끝에서 밀면 돌아옵니다",
    .upload = "이벤트 보내기",
    .waiting = "대기 중인 이벤트",
    .uploading = "이벤트를 보냅니다",
    .developer = "개발자 정보",
    .developerNote = "SDK가 앱에 알린 것과 대기 중인 이벤트",
    .told = "알림",
    .openingTime = "start에서 페이지의 첫 메시지까지",
    .pages = "페이지 이동",
    .queue = "이벤트 대기열",
    .nothing = "아직 없습니다",

    .loading = "쇼핑을 여는 중",
    .failure = "쇼핑을 열 수 없어요",
    .failureMore = "인터넷 연결을 확인하고 다시 시도해 주세요.",
    .tryAgain = "다시 시도",
    .back = "보던 화면으로",
};

constexpr Texts english {
    .appName = "Example",
    .headerNote = "The app’s own header",
    .leave = "Close the shop",
    .footerNote = "The app’s own footer, which pages can hide",

    .greeting = "Shopping today",
    .greetingMore = "Things made by hand, right here in the app.",
    .open = "Open the shop",
    .push = "Push the shop on the stack",
    .pushNote = "A swipe from the left edge leads back",
    .upload = "Upload the events",
    .waiting = "Events that wait",
    .uploading = "Uploading the events",
    .developer = "For developers",
    .developerNote = "What the SDK told the app, and the event queue",
    .told = "Told by the SDK",
    .openingTime = "From start to the page’s first message",
    .pages = "Pages visited",
    .queue = "Event queue",
    .nothing = "Nothing yet",

    .loading = "Opening the shop",
    .failure = "The shop cannot be opened",
    .failureMore = "Check the internet connection and try again.",
    .tryAgain = "Try again",
    .back = "Back to the page",
};

bool isKorean()
{
    return std::string_view(g_get_language_names()[0]).starts_with("ko");
}

}

Texts const& texts()
{
    return isKorean() ? korean : english;
}

char const* languageTag()
{
    return isKorean() ? "ko-KR" : "en-US";
}

}
