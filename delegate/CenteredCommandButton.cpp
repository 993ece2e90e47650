#include <vorn/delegate/CenteredCommandButton.h>

#include <QApplication>

CenteredCommandButton::CenteredCommandButton() : QWidget(nullptr), enabled(true), active(true)
{
    ui.setupUi(this);
    ui.commandButton->setFixedHeight(16);
    // The form asks for a plain default font; the button follows the application's font instead,
    // like the text in the cells around it.
    ui.commandButton->setFont(QApplication::font());

    // Until the owner reports the real state, show a running command that cannot be pressed.
    setActivationState(true);
    setEnableState(true);
}

CenteredCommandButton::~CenteredCommandButton() = default;

void CenteredCommandButton::setActivationState(bool isActive)
{
    // The state texts stay untranslated; only the form's own texts go through retranslateUi.
    if (isActive) {
        ui.commandButton->setText(QStringLiteral("running..."));
        ui.commandButton->setEnabled(false);
    } else {
        ui.commandButton->setText(QStringLiteral("Execute"));
        ui.commandButton->setEnabled(enabled);
    }
    active = isActive;
}

void CenteredCommandButton::setEnableState(bool isEnabled)
{
    // A running command cannot be started again, so activity wins over the enable state.
    ui.commandButton->setEnabled(isEnabled && !active);
    enabled = isEnabled;
}
