#include "examples/service/Control.h"

#include "examples/service/CollectorStore.h"
#include "examples/service/Faults.h"
#include "examples/service/Json.h"

#include <utility>

namespace zelvora::examples {

Control::Control(Faults& faults, CollectorStore& store) : m_faults(faults), m_store(store) { }

Reply Control::answer(Request const& request)
{
    if (request.path == "/faults" && isRead(request))
        return jsonReply(200, m_faults.describe());
    if (request.path == "/faults")
        return request.method == "POST" ? setFault(request) : methodNotAllowed("GET, POST");
    if (request.path == "/reset")
        return request.method == "POST" ? reset(request) : methodNotAllowed("POST");
    return errorReply(404, "the control endpoint knows /faults and /reset");
}

Reply Control::setFault(Request const& request)
{
    auto const json = parseJson(request.body);
    if (!json)
        return errorReply(400, "the body must be JSON");
    auto order = readFaultOrder(*json);
    if (!order)
        return errorReply(400, order.error());
    m_faults.set(order->target, std::move(order->fault));
    return jsonReply(200, m_faults.describe());
}

Reply Control::reset(Request const& request)
{
    auto const json = request.body.empty() ? nlohmann::json::object() : parseJson(request.body);
    if (!json || !json->is_object())
        return errorReply(400, "the body must be empty or an object");
    m_faults.reset();
    if (json->value("collected", nlohmann::json()) == true && !m_store.clear())
        return errorReply(503, "the collected events could not be removed");
    return jsonReply(200, m_faults.describe());
}

} // namespace zelvora::examples
