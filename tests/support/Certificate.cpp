#include "support/Certificate.h"

#include <cstdio>
#include <openssl/evp.h>
#include <openssl/pem.h>
#include <openssl/x509.h>

#include "support/OpenSsl.h"

namespace torvex::test {

void writeCertificate(const std::string& certificateFile, const std::string& keyFile) {
    const Held<EVP_PKEY, EVP_PKEY_free> key(EVP_EC_gen("P-256"));
    const Held<X509, X509_free> certificate(X509_new());
    X509_set_version(certificate.get(), 2);
    ASN1_INTEGER_set(X509_get_serialNumber(certificate.get()), 1);
    X509_gmtime_adj(X509_getm_notBefore(certificate.get()), -60);
    X509_gmtime_adj(X509_getm_notAfter(certificate.get()), 3600);
    X509_set_pubkey(certificate.get(), key.get());
    X509_sign(certificate.get(), key.get(), EVP_sha256());
    const Held<FILE, std::fclose> out(std::fopen(certificateFile.c_str(), "w"));
    PEM_write_X509(out.get(), certificate.get());
    const Held<FILE, std::fclose> keyOut(std::fopen(keyFile.c_str(), "w"));
    PEM_write_PrivateKey(keyOut.get(), key.get(), nullptr, nullptr, 0, nullptr, nullptr);
}

}  // namespace torvex::test
