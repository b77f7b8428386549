#pragma once

#include <QByteArrayView>
#include <QString>

#include <memory>

/// A SHA-256 that can be read and then go on: the digest of a partial download is taken many times.
/// One owner at a time; no lock of its own.
class IncrementalHasher {
public:
    IncrementalHasher();
    ~IncrementalHasher();
    IncrementalHasher(IncrementalHasher &&) noexcept;
    IncrementalHasher &operator=(IncrementalHasher &&) noexcept;

    void update(QByteArrayView bytes);

    /// 64 lower-case hexadecimal digits of everything taken so far.
    QString hexDigest() const;

private:
    struct Context;
    std::unique_ptr<Context> m_context;
};
