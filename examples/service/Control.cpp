#include "examples/service/Control.h"

#include "examples/service/CollectorStore.h"
#include "examples/service/Faults.h"

#include <nlohmann/json.hpp>

namespace zelvora::examples {

namespace {

Reply setFault(Faults& faults, std::string const& body)
{
    auto const json = parseJson(body);
    if (!json)
        return errorReply(400, "the body must be JSON");
    auto order = readFaultOrder(*json);
    if (!order)
        return errorReply(400, order.error());
    faults.set(order->target, std::move(order->fault));
    return jsonReply(200, faults.describe());
}

Reply reset(Faults& faults, CollectorStore& store, std::string const& body)
{
    auto const json = parseJson(body.empty() ? "{}" : body);
    if (!json || !json->is_object())
        return errorReply(400, "the body must be empty or an object");
    faults.reset();
    if (json->value("collected", Json()) == true && !store.clear())
        return errorReply(503, "the collected events could not be removed");
    return jsonReply(200, faults.describe());
}

}

Reply answerControl(Faults& faults, CollectorStore& store, Request const& request)
{
    if (request.path == "/faults" && isRead(request))
        return jsonReply(200, faults.describe());
    if (request.path == "/faults")
        return request.method == "POST" ? setFault(faults, request.body) : methodNotAllowed("GET, POST");
    if (request.path == "/reset")
        return request.method == "POST" ? reset(faults, store, request.body) : methodNotAllowed("POST");
    return errorReply(404, "this host knows /faults and /reset");
}

}
