#pragma once

#include <QByteArrayList>

/// While it lives, every order by which this process has something reach the disk is written down: what
/// is left of a power failure is what such orders have brought there. A program that uses it links
/// ostrelin_disk_record, which stands before the system's own calls. One at a time; any thread is heard.
class DiskRecord {
public:
    DiskRecord();
    ~DiskRecord();
    DiskRecord(const DiskRecord &) = delete;
    DiskRecord &operator=(const DiskRecord &) = delete;

    /// The orders so far: "flush PATH" of a file or a folder, and "rename PATH to PATH".
    static QByteArrayList orders();
};
