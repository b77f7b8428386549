#include "records/IncrementalHasher.h"

#include <QByteArray>

#include <array>

#include <openssl/evp.h>

namespace {

/// OpenSSL's digests fail only where memory is short or the library is broken.
void require(int result) {
    if (result != 1)
        qFatal("SHA-256 isn't working");
}

struct Free {
    void operator()(EVP_MD_CTX *context) const { EVP_MD_CTX_free(context); }
};

using State = std::unique_ptr<EVP_MD_CTX, Free>;

} // namespace

struct IncrementalHasher::Context {
    State state{EVP_MD_CTX_new()};
};

IncrementalHasher::IncrementalHasher() : m_context(std::make_unique<Context>()) {
    require(EVP_DigestInit_ex(m_context->state.get(), EVP_sha256(), nullptr));
}

IncrementalHasher::~IncrementalHasher() = default;
IncrementalHasher::IncrementalHasher(IncrementalHasher &&) noexcept = default;
IncrementalHasher &IncrementalHasher::operator=(IncrementalHasher &&) noexcept = default;

void IncrementalHasher::update(QByteArrayView bytes) {
    require(EVP_DigestUpdate(m_context->state.get(), bytes.data(), static_cast<size_t>(bytes.size())));
}

QString IncrementalHasher::hexDigest() const {
    const State finished(EVP_MD_CTX_new());
    std::array<unsigned char, 32> digest;
    require(EVP_MD_CTX_copy_ex(finished.get(), m_context->state.get()));
    require(EVP_DigestFinal_ex(finished.get(), digest.data(), nullptr));
    const auto view = QByteArrayView(digest.data(), digest.size());
    return QString::fromLatin1(view.toByteArray().toHex());
}
