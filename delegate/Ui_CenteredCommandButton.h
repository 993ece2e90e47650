/********************************************************************************
** Form of CenteredCommandButton, kept in the shape the Qt form compiler writes so that it can be
** compared line by line with a regenerated form.
********************************************************************************/

#ifndef UI_CENTEREDCOMMANDBUTTON_H
#define UI_CENTEREDCOMMANDBUTTON_H

#include <QtCore/QVariant>
#include <QtWidgets/QApplication>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSpacerItem>
#include <QtWidgets/QVBoxLayout>
#include <QtWidgets/QWidget>

QT_BEGIN_NAMESPACE

class Ui_CenteredCommandButton
{
public:
    QVBoxLayout* verticalLayout_2;
    QSpacerItem* horizontalSpacer;
    QVBoxLayout* verticalLayout;
    QPushButton* commandButton;
    QSpacerItem* verticalSpacer;

    void setupUi(QWidget* CenteredCommandButton)
    {
        if (CenteredCommandButton->objectName().isEmpty())
            CenteredCommandButton->setObjectName(QString::fromUtf8("CenteredCommandButton"));
        CenteredCommandButton->resize(257, 18);
        QSizePolicy sizePolicy(QSizePolicy::Expanding, QSizePolicy::Minimum);
        sizePolicy.setHorizontalStretch(0);
        sizePolicy.setVerticalStretch(0);
        sizePolicy.setHeightForWidth(CenteredCommandButton->sizePolicy().hasHeightForWidth());
        CenteredCommandButton->setSizePolicy(sizePolicy);
        verticalLayout_2 = new QVBoxLayout(CenteredCommandButton);
        verticalLayout_2->setSpacing(0);
        verticalLayout_2->setObjectName(QString::fromUtf8("verticalLayout_2"));
        verticalLayout_2->setContentsMargins(1, 1, 0, 0);
        horizontalSpacer = new QSpacerItem(164, 0, QSizePolicy::Expanding, QSizePolicy::Minimum);

        verticalLayout_2->addItem(horizontalSpacer);

        verticalLayout = new QVBoxLayout();
        verticalLayout->setSpacing(0);
        verticalLayout->setObjectName(QString::fromUtf8("verticalLayout"));
        commandButton = new QPushButton(CenteredCommandButton);
        commandButton->setObjectName(QString::fromUtf8("commandButton"));
        commandButton->setMinimumSize(QSize(64, 16));
        commandButton->setMaximumSize(QSize(64, 16));
        QFont font;
        font.setBold(false);
        font.setWeight(50);
        commandButton->setFont(font);
        commandButton->setAutoFillBackground(true);
        commandButton->setFlat(false);

        verticalLayout->addWidget(commandButton);

        verticalLayout_2->addLayout(verticalLayout);

        verticalSpacer = new QSpacerItem(0, 0, QSizePolicy::Fixed, QSizePolicy::Minimum);

        verticalLayout_2->addItem(verticalSpacer);

        retranslateUi(CenteredCommandButton);

        QMetaObject::connectSlotsByName(CenteredCommandButton);
    } // setupUi

    void retranslateUi(QWidget* CenteredCommandButton)
    {
        CenteredCommandButton->setWindowTitle(
            QCoreApplication::translate("CenteredCommandButton", "Form", nullptr));
        commandButton->setText(QCoreApplication::translate("CenteredCommandButton", "Execute", nullptr));
    } // retranslateUi
};

namespace Ui {
class CenteredCommandButton : public Ui_CenteredCommandButton
{};
} // namespace Ui

QT_END_NAMESPACE

#endif // UI_CENTEREDCOMMANDBUTTON_H
