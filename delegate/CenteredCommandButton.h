#pragma once

#include <vorn/base/VornExport.h>
#include <vorn/delegate/Ui_CenteredCommandButton.h>

#include <QWidget>

// The push button a command parameter shows in its value cell. The widget stretches over the cell;
// the button keeps a fixed 64 x 16 size one pixel in from the cell's top left corner, clear of the
// grid lines, however wide the cell is.
//
// Its owner drives two states: whether the command may be executed at all (setEnableState) and
// whether it is running now (setActivationState). A running command shows "running..." and cannot
// be pressed again, whatever its enable state; once it stops, the button shows "Execute" and follows
// the last enable state it was given. The owner listens to ui.commandButton's clicked().
class VORN_PARAMETERSQT4_API CenteredCommandButton : public QWidget
{
    Q_OBJECT

public:
    // Starts active and enabled, so the button shows "running..." and stays disabled until its
    // owner reports the command's real state.
    CenteredCommandButton();
    ~CenteredCommandButton() override;

    Ui_CenteredCommandButton ui;

public Q_SLOTS:
    void setActivationState(bool isActive);
    void setEnableState(bool isEnabled);

private:
    bool enabled;
    bool active;
};
