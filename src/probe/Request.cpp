#include "probe/Request.h"

#include "Version.h"
#include "probe/Base64.h"
#include "services/Services.h"

namespace tarnwick {

namespace {

std::string EncodedCredentials(const LinkRecord& link) {
    const std::string plain = link.User + ":" + link.Password;
    Favorites::Bytes encoded;
    Favorites::Base64Encode(Favorites::Bytes(plain.begin(), plain.end()), encoded);
    return {encoded.begin(), encoded.end()};
}

} // namespace

std::string BuildRequest(const LinkRecord& link, bool keepAlive, bool withCredentials) {
    const std::string end = "\r\n";
    std::string request = "GET " + link.RequestTarget + " HTTP/1.0" + end;
    request += "Host: " + link.Host + end;
    request += std::string("User-Agent: Tarnwick ") + Release + end;
    request += "Accept: *.*, */*" + end;
    if (keepAlive)
        request += "Proxy-Connection: Keep-Alive" + end;
    if (withCredentials && !link.User.empty() && !link.Password.empty())
        request += "Authorization: Basic " + EncodedCredentials(link) + end;
    return request + end;
}

} // namespace tarnwick
