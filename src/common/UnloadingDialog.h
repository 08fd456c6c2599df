#pragma once

#include <QDialog>

namespace mirvalde {

// A dialog window that every way of closing unloads: "OK", Enter, Escape, the frame's close
// button or the window menu. A plain dialog would only hide on Escape.
class UnloadingDialog : public QDialog {
  public:
    explicit UnloadingDialog(QWidget* parent = nullptr) : QDialog(parent) {
        setAttribute(Qt::WA_DeleteOnClose);
    }

    void done(int result) override {
        QDialog::done(result);
        deleteLater();
    }
};

}  // namespace mirvalde
