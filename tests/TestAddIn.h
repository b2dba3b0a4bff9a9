#pragma once

#include "addin/host/AddInCommands.h"
#include "addin/host/AddInCommandsEvents.h"
#include "addin/host/Application.h"
#include "addin/host/CommandBar.h"
#include "addin/host/CommandBarControl.h"
#include "addin/host/CommandBars.h"
#include "addin/host/Document.h"
#include "addin/host/GraphicObject.h"
#include "addin/host/MachineSetup.h"
#include "addin/host/MainMenus.h"
#include "addin/host/MenuControls.h"
#include "feldra/Host.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

// A small add-in of the tests: command 1 "Ask" (before the last button of bar
// 23) shows the modal dialog frmAsk; command 2 "Never" is always disabled;
// command 3 "Toggle Ask" (in the Help menu) switches command 1 off and on;
// command 4 "Pick" lets the user pick an object and writes its key into the
// machine setup's program name ("cancelled" when the pick is cancelled);
// command 5 "Panel" (at the end of bar 23) shows the modeless dialog frmPanel
// and is enabled while that is hidden (Escape hides it).
// frmAsk echoes its field on lost focus into lblEcho and its list's choice
// into lblChoice; cmdOK asks "Keep <value>?" and on Yes writes the value into
// the machine setup's parameter 814 and closes.
class TestAddIn : public host::AddInCommandsEvents, public QObject {
public:
    explicit TestAddIn(feldra::Host& host) : host_(host), app_(host.ApplicationFor("Test.Connect"))
    {
        auto commands = app_->AddInCommands();
        cookie_ = commands->Cookie();
        ask_ = commands->AddCommand(cookie_, 1, "Test");
        never_ = commands->AddCommand(cookie_, 2, "Test");
        toggle_ = commands->AddCommand(cookie_, 3, "Test");
        const int pick = commands->AddCommand(cookie_, 4, "Test");
        const int panel = commands->AddCommand(cookie_, 5, "Test");
        commands->Advise(this);
        app_->MainMenus()->Item(9)->Add(1, "Toggle Ask", toggle_);
        app_->MainMenus()->Item(9)->Add(1, "Pick", pick);
        auto bar = app_->CommandBars()->Item(23);
        bar->AddControl(1, "Ask", ask_, bar->ControlCount())->setToolTip("Asks for a value");
        bar->AddControl(1, "Never", never_, bar->ControlCount());
        bar->AddControl(1, "Panel", panel, bar->ControlCount() + 1);
        panel_.setObjectName("frmPanel");
        panel_.setModal(false);
    }

    void OnCommand(int, int nCmdId) override
    {
        if (nCmdId == 1)
            showAsk();
        if (nCmdId == 3)
            askEnabled_ = !askEnabled_;
        if (nCmdId == 4) {
            auto document = app_->ActiveDocument();
            auto picked = document->PickObject("Pick a feature", 0);
            document->MachineSetup()->setProgramName(picked ? picked->Key() : QStringLiteral("cancelled"));
        }
        if (nCmdId == 5)
            panel_.show();
    }
    void OnCommandUI(int, int nCmdId, bool& Enabled, bool&) override
    {
        Enabled = nCmdId == 5 ? panel_.isHidden() : nCmdId >= 3 || (nCmdId == 1 && askEnabled_);
    }

    int Cookie() const { return cookie_; }

private:
    void showAsk()
    {
        QDialog dialog;
        dialog.setObjectName("frmAsk");
        auto* layout = new QVBoxLayout(&dialog);
        auto* value = new QLineEdit;
        value->setObjectName("txtValue");
        auto* echo = new QLabel;
        echo->setObjectName("lblEcho");
        auto* choice = new QComboBox;
        choice->setObjectName("cmbChoice");
        choice->addItems({"A", "B", "C"});
        auto* chosen = new QLabel;
        chosen->setObjectName("lblChoice");
        auto* flag = new QCheckBox("Flag");
        flag->setObjectName("chkFlag");
        auto* ok = new QPushButton("OK");
        ok->setObjectName("cmdOK");
        for (QWidget* w : std::initializer_list<QWidget*>{value, echo, choice, chosen, flag, ok})
            layout->addWidget(w);
        echoOnFocusOut_ = [value, echo] { echo->setText(value->text()); };
        value->installEventFilter(this);
        QObject::connect(choice, &QComboBox::activated, [choice, chosen](int) { chosen->setText(choice->currentText()); });
        QObject::connect(ok, &QPushButton::clicked, [this, value, &dialog] {
            const auto answer = app_->MessageBoxes()->Show("Keep " + value->text() + "?", host::MsgButtons::YesNo,
                                                                  host::MsgIcon::Question, "Test");
            if (answer == host::MsgResult::Yes) {
                app_->ActiveDocument()->MachineSetup()->setParam814(value->text().toDouble());
                dialog.accept();
            }
        });
        dialog.exec();
        // The field goes with the dialog: no echo from a field being destroyed.
        value->removeEventFilter(this);
        echoOnFocusOut_ = nullptr;
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::FocusOut)
            echoOnFocusOut_();
        return false;
    }

    feldra::Host& host_;
    std::shared_ptr<host::Application> app_;
    int cookie_ = 0;
    int ask_ = 0;
    int never_ = 0;
    int toggle_ = 0;
    bool askEnabled_ = true;
    QDialog panel_;
    std::function<void()> echoOnFocusOut_;
};
