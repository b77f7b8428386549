#pragma once

class QFileDialog;

/// Has a dialog begin with the person's documents, or at home where there are none, unless the person was
/// somewhere with the dialog before it: then it begins there.
void beginInDocuments(QFileDialog &dialog);
