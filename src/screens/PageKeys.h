#pragma once

#include <Qt>

/// True for a key that moves by a page.
inline bool isPageKey(int key) {
    return key == Qt::Key_PageUp || key == Qt::Key_PageDown;
}
