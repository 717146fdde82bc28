// VerifyTlsHost: makes OpenSSL check the name in servers' certificates, which QuickFIX does not ask it for.
#pragma once

#include <string>

// For all connections as a client from then on that name no host themselves. A name or an IP address. Throws
// std::runtime_error.
void VerifyTlsHost(const std::string& host);
// The file with the authorities that the system trusts. Throws std::runtime_error if it has none.
std::string SystemTlsAuthorities();
