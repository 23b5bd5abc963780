#pragma once

#include <map>
#include <string>

namespace zelvora::tests {

/// A request as it reached the server.
struct ReceivedRequest {
    std::string method;
    /// By names in lower case.
    std::map<std::string, std::string> headers;
    std::string body;
};

/// Changes ASCII letters only.
inline std::string lowerCase(std::string text)
{
    for (char& letter : text) {
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    }
    return text;
}

}
