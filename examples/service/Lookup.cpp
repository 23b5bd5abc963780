#include "examples/service/Lookup.h"

#include "examples/service/Json.h"
#include "examples/service/ShopDirectory.h"

namespace zelvora::examples {

namespace {

struct Question {
    std::string profile;
    std::string apiKey;
};

std::optional<Question> readQuestion(std::string const& body)
{
    auto const json = parseJson(body);
    if (!json || !json->is_object() || json->size() != 2)
        return std::nullopt;
    auto const profile = json->find("profile");
    auto const apiKey = json->find("api_key");
    if (profile == json->end() || apiKey == json->end() || !profile->is_string() || !apiKey->is_string())
        return std::nullopt;
    return Question { .profile = profile->get<std::string>(), .apiKey = apiKey->get<std::string>() };
}

} // namespace

Lookup::Lookup(ShopDirectory const& shops) : m_shops(shops) { }

Reply Lookup::answer(Request const& request)
{
    if (request.path != "/")
        return errorReply(404, "the lookup lives at /");
    if (request.method != "POST")
        return methodNotAllowed("POST");
    if (!isJson(request))
        return errorReply(415, "the body must be application/json");

    auto const question = readQuestion(request.body);
    if (!question)
        return errorReply(400, "the body must be an object with exactly the texts profile and api_key");
    if (question->profile != "dev" && question->profile != "prd")
        return errorReply(400, "profile must be dev or prd");

    auto const shop = m_shops.shopOfKey(question->apiKey);
    if (!shop)
        return errorReply(404, "unknown api_key");
    return jsonReply(200, { { "data", { { "shopId", shop->shopId } } } });
}

} // namespace zelvora::examples
