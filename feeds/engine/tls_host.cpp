#include "feeds/engine/tls_host.h"

#include <openssl/x509_vfy.h>
#include <openssl/x509v3.h>

#include <cstdlib>
#include <fstream>
#include <stdexcept>

// libssl looks the parameters for a server's certificate up by this name: those that are added go before its own.
void VerifyTlsHost(const std::string& host) {
  X509_VERIFY_PARAM* own = X509_VERIFY_PARAM_new();
  const X509_VERIFY_PARAM* usual = X509_VERIFY_PARAM_lookup("ssl_server");
  const bool made =
      own && usual && X509_VERIFY_PARAM_set1(own, usual) && X509_VERIFY_PARAM_set1_name(own, "ssl_server") &&
      (X509_VERIFY_PARAM_set1_ip_asc(own, host.c_str()) || X509_VERIFY_PARAM_set1_host(own, host.c_str(), host.size()));
  if (made) X509_VERIFY_PARAM_set_hostflags(own, X509_CHECK_FLAG_NO_PARTIAL_WILDCARDS);
  if (made && X509_VERIFY_PARAM_add0_table(own)) return;
  X509_VERIFY_PARAM_free(own);
  throw std::runtime_error("OpenSSL does not take " + host + " as the name of a host.");
}

std::string SystemTlsAuthorities() {
  const char* chosen = std::getenv(X509_get_default_cert_file_env());
  const char* const files[] = {chosen ? chosen : "", "/etc/ssl/certs/ca-certificates.crt",
                               "/etc/pki/tls/certs/ca-bundle.crt", X509_get_default_cert_file()};
  for (const char* file : files)
    if (*file && std::ifstream(file)) return file;
  throw std::runtime_error("The system has no file of authorities for TLS: set authorities in [tls].");
}
