#!/usr/bin/env bash
# Plants one defect after the other in a copy of the sources and says in which world the simulation finds it.
#
#     tests/simulation/plant.sh [WORD]   only the defects whose names contain the word
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."

top="$PWD"
copy="$top/build/planted"
worlds=10000

# defect NAME FILE PERL-SUBSTITUTION: one that does not change the file has lost its place and is a failure.
names=() files=() changes=()
defect() {
    names+=("$1")
    files+=("ZelvoraIOS/$2")
    changes+=("$3")
}

sdk=ZelvoraSDK/internal
defect "a value expires at its lifetime, not after it" internal/StoredEntry.cpp \
    's/return \*expiry </return *expiry <=/'
defect "a write without lifetime keeps the old date" internal/StoredEntry.cpp \
    's/    if \(!lifetime\) \{\n        storage\(\)\.removeObject\(m_timestampKey\);/    if (!lifetime) {/'
defect "removing a value leaves its lifetime" internal/StoredEntry.cpp \
    's/(StoredEntry::remove\(\) const\n\{.*?)    storage\(\)\.removeObject\(m_expiryKey\);\n/$1/s'
defect "an expired value is reported absent but kept" ZelvoraStorage.cpp \
    's/        entry\.remove\(\);\n        return std::nullopt;/        return std::nullopt;/'
defect "the shop id is kept for an hour less" ZelvoraStorage.cpp \
    's/86400\.0/82800.0/'
defect "the newest events are removed, not the oldest" internal/EventQueue.cpp \
    's/queued\.droppingFirst\(static_cast<std::size_t>\(count\)\)/queued.prefix(queued.size() - static_cast<std::size_t>(count))/'
defect "one event too many is removed" internal/EventQueue.cpp \
    's/droppingFirst\(static_cast<std::size_t>\(count\)\)/droppingFirst(static_cast<std::size_t>(count) + 1)/'
defect "a queue of the wrong shape keeps out new events" internal/EventQueue.cpp \
    's/(void EventQueue::save\(.*?\n)(    changeQueue)/$1    if (ZelvoraStorage::getString(KEY_EVENT_DATA))\n        return;\n$2/s'
defect "a batch holds 501 events" $sdk/TrackingUpload.cpp \
    's/batchLimit = 500/batchLimit = 501/'
defect "an upload removes the whole queue" $sdk/TrackingUpload.cpp \
    's/removeEventTrackingData\(static_cast<std::ptrdiff_t>\(count\)\)/clearEventTrackingData()/'
defect "a status of 299 counts as a failure" $sdk/TrackingUpload.cpp \
    's/status <= last/status < last/'
defect "a null marker goes out to the collector" $sdk/TrackingUpload.cpp \
    's/value\.isNull\(\) \? Value\(""\) : value/value/'
defect "an empty event id stays empty" $sdk/TrackingUpload.cpp \
    's/isBlank\(event\.find\("eventId"\)\)/!event.find("eventId")/'
defect "the shop id is looked up although one is stored" $sdk/ShopIdLookup.cpp \
    's/if \(auto stored = ZelvoraStorage::getValidShopId\(\)\)/if (auto stored = ZelvoraStorage::getValidShopId(); stored \&\& stored->empty())/'
defect "a status of 201 counts as a found shop" $sdk/ShopIdLookup.cpp \
    's/status != success/status \/ success != 1/'
defect "the found shop id is not stored" $sdk/ShopIdLookup.cpp \
    's/    ZelvoraStorage::saveShopId\(\*shopId\);\n//'
defect "the lookup ends on the loader queue: a lost hop" $sdk/ShopIdLookup.cpp \
    's/    co_await platform::resumeOn\(Platform::current\(\)\.globalQueue\(\)\);\n//'
defect "the busy flag is cleared after the hop to the main queue" $sdk/InitializationSequence.cpp \
    's/(    m_properties\.set\(&Properties::isInitializing, false\);\n)(    co_await resumeOn\(Platform::current\(\)\.mainQueue\(\)\);\n)/$2$1/'
defect "the deferred presenter is not cleared" $sdk/InitializationSequence.cpp \
    's/    m_properties\.set\(&Properties::pendingViewController, nullptr\);\n//'
defect "the lookups run one after the other" $sdk/InitializationSequence.cpp \
    's/    auto bothLookups =.*?co_await bothLookups;\n/    auto first = m_shopIdLookup.fetchShopId(std::move(apiKey));\n    co_await first;\n    auto second = m_trackingPermission.fetchIDFA();\n    co_await second;\n/s'
defect "an initialization does not upload" $sdk/InitializationSequence.cpp \
    's/    m_trackingUpload\.sendTrackingData\(\);\n//'
defect "the prompt does not wait for an active app" $sdk/TrackingPermission.cpp \
    's/applicationState\(\) == platform::UIApplicationState::Active/applicationState() != platform::UIApplicationState::Background/'
defect "the prompt comes at once" $sdk/TrackingPermission.cpp \
    's/promptDelay = 0\.1/promptDelay = 0/'
defect "the observer of the activation stays" $sdk/TrackingPermission.cpp \
    's/            center\.removeObserver\(observer->token\);\n            observer->handler\(notification\);/            (void)center;\n            if (observer->token != 0) {\n                observer->token = 0;\n                observer->handler(notification);\n            }/'
defect "an identifier is read from a user who restricted it" $sdk/TrackingPermission.cpp \
    's/if \(status != ATTrackingAuthorizationStatus::Authorized\)/if (status == ATTrackingAuthorizationStatus::Denied)/'
defect "a second call tells the second caller" ZelvoraSDK/ZelvoraSDK.cpp \
    's/(if \(running\) \{\n).*?(        return std::unexpected)/$1        if (completion_handler)\n            completion_handler(ZelvoraSDKError::initializing());\n$2/s'
defect "the footer does not follow a value that it has" ZelvoraSDK/ZelvoraSDK.cpp \
    's/(void ZelvoraSDK::setFooterVisible\(bool visible\)\n\{\n)/$1    if (isFooterVisible() == visible)\n        return;\n/'
defect "a launch is presented inside the call" $sdk/Launch.cpp \
    's/    platform::Platform::current\(\)\.mainQueue\(\)\.async\(\n(.*?)present\(std::move\(url\), \*presenter\); \}\);/    present(std::move(url), *presenter);/s'
defect "a presentation does not cover the screen" $sdk/Launch.cpp \
    's/    container->setModalPresentationStyle\(platform::UIModalPresentationStyle::FullScreen\);\n//'
defect "a screen leaves before its events do" internal/MessageDispatch.cpp \
    's/(            ZelvoraSDK::shared\(\)\.sendTrackingData\(\);\n)(            if \(viewController\)\n.*?;\n)/$2$1/s'
defect "a value is read although nobody waits for it" internal/MessageDispatch.cpp \
    's/if \(key && callback\)/if (key \&\& !callback)\n            (void)ZelvoraStorage::get(*key);\n        if (key \&\& callback)/'
defect "a number shows the footer" internal/MessageDispatch.cpp \
    's/argument \? argument->boolean\(\) : std::nullopt/argument ? (argument->number() ? std::optional(true) : argument->boolean()) : std::nullopt/'
defect "a lifetime written as text counts" internal/MessageDispatch.cpp \
    's/expire \? expire->number\(\) : std::nullopt/expire ? (expire->text() ? std::optional(60.0) : expire->number()) : std::nullopt/'
defect "an answer comes without its alert" internal/PageCallback.cpp \
    's/        webView->evaluateJavaScript\("javascript:alert\(.*?;\n//'
defect "a text of the page ends its literal" internal/PageCallback.cpp \
    's/    auto const written = writtenAsJSON\(platform::Array \{ string \}\);\n.*?\n\}/    return "\\"" + string + "\\"";\n}/s'
defect "a link with a scheme in capitals is cancelled" internal/NavigationPolicy.cpp \
    's/c >= .A. && c <= .Z. \? static_cast<char>\(c - .A. \+ .a.\) : c/c/'
defect "a view that is gone still receives messages: a callback after close" ZelvoraIOSView/ZelvoraWebView.cpp \
    's/    m_webView->configuration\(\)\.userContentController->removeScriptMessageHandler\(\n.*?;\n//'
defect "a host is told of pages without a URL" ZelvoraIOSView/ZelvoraWebView.cpp \
    's/        if \(!url\)\n            return;\n/        if (!url) {\n            if (auto const onPageNavigation = ZelvoraSDK::shared().onPageNavigation())\n                onPageNavigation("");\n            return;\n        }\n/'
defect "a swipe leaves the screen before the history ends" ZelvoraIOSViewController/ZelvoraIOSViewController.cpp \
    's/    if \(m_zelvoraWebView->canGoBack\(\)\) \{.*?\n    \}\n//s'
defect "the events stay when the screen leaves" ZelvoraIOSViewController/ZelvoraIOSViewController.cpp \
    's/(zelvoraSDKWillDismiss\(\);\n)    ZelvoraSDK::shared\(\)\.sendTrackingData\(\);\n/$1/'
defect "a screen never ends: its observer keeps it" ZelvoraIOSViewController/ZelvoraIOSViewController.cpp \
    's/\[weak = std::weak_ptr\(self\)\]\(\n(.*?)handleFooterVisibilityChange\(weak, /[weak = std::weak_ptr(self), self](\n$1handleFooterVisibilityChange(weak, /s'
defect "the page does not make room for the footer" ZelvoraIOSViewController/ZelvoraIOSViewController.cpp \
    's/    m_webViewBottomConstraint = makeWebViewBottomConstraint\(visible\);/    m_webViewBottomConstraint = makeWebViewBottomConstraint(false);/'

prepare() {
    local file launcher=()
    mkdir -p "$copy"
    while IFS= read -r -d '' file; do
        cmp -s "$file" "$copy/$file" || cp --parents "$file" "$copy"
    done < <(git ls-files -z --cached --others --exclude-standard -- CMakeLists.txt CMakePresets.json cmake ZelvoraIOS ZelvoraPlatform \
        ZelvoraAdapters/CMakeLists.txt ZelvoraAdapters/shared ZelvoraAdapters/memory tests/CMakeLists.txt tests/support \
        tests/simulation)
    if command -v ccache >/dev/null; then
        launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    fi
    cmake -S "$copy" --preset simulation "${launcher[@]}" >"$copy/configure.log"
}

# plant NUMBER: prints the line of the table. Fails unless the simulation finds the defect.
plant() {
    local name="${names[$1]}" file="$copy/${files[$1]}" log="$copy/log" found
    cp "$top/${files[$1]}" "$file"
    perl -0pi -e "${changes[$1]}" "$file"
    if cmp -s "$top/${files[$1]}" "$file"; then
        printf '| %s | has lost its place in %s |\n' "$name" "${files[$1]}"
        return 1
    fi
    local status=0
    if cmake --build "$copy/build/simulation" --target zelvora_simulate >"$log" 2>&1; then
        "$copy/build/simulation/tests/simulation/zelvora_simulate" --seeds "$worlds" >"$log" 2>&1 || true
        found="$(sed -nE 's/^After ([0-9]+) worlds:$/\1/p' "$log")"
        [[ -n "$found" ]] || status=1
        printf '| %s | %s |\n' "$name" "${found:-not found}"
    else
        printf '| %s | does not compile |\n' "$name"
        tail -n 20 "$log" >&2
        status=1
    fi
    cp "$top/${files[$1]}" "$file"
    return "$status"
}

# A simulation that finds something where nothing is planted would prove nothing.
find_nothing() {
    cmake --build "$copy/build/simulation" --target zelvora_simulate >"$copy/log" 2>&1 &&
        "$copy/build/simulation/tests/simulation/zelvora_simulate" --seeds 1000 >>"$copy/log" 2>&1
}

main() {
    local number failed=0
    prepare
    if ! find_nothing; then
        tail -n 20 "$copy/log" >&2
        return 1
    fi
    printf '| defect | found in world |\n|---|---:|\n'
    for number in "${!names[@]}"; do
        [[ "${names[$number]}" == *"${1:-}"* ]] || continue
        plant "$number" || failed=$((failed + 1))
    done
    ((failed == 0))
}

main "$@"
