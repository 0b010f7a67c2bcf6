// "Watch Window": the watches of WatchTable as a list window (ListWindow.h),
// a label and a value per watch, with the watch entries shown in its popup.
// A cleared window labels every watch by its address.
#pragma once

#include "ui/views/ListWindow.h"

class frmWatch : public ListWindow {
    Q_OBJECT
protected:
    int RowCount() const override;
    QString RowLabel(int row, bool live) const override;
    QString ValueText(int row) const override;
    std::uint32_t ChangedBits(int row) const override;
    char Format(int row) const override;
    void SetFormat(int row, char format) override;
    bool IsWord(int row) const override;
    bool Read() override;
    void Write(int row, std::int32_t value) override;
    void PreparePopup() override;
    void PopupClosed() override;
    void Form_Activate() override;
    void Form_Deactivate() override;

private:
    friend QWidget* CreateWatch(frmMain&);
    explicit frmWatch(frmMain& main);
};

QWidget* CreateWatch(frmMain& main);
