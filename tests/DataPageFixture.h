#pragma once

#include "TempStores.h"
#include "addin/host/HostFacade.h"
#include "addin/modGlobals.h"
#include "addin/settings/MachineCodes.h"
#include "addin/settings/SettingsStore.h"
#include "addin/ui/UiServices.h"
#include "datapage/DataPageSettings.h"
#include "datapage/frmMarelonDataPage.h"
#include "feldra/DocumentState.h"
#include "feldra/Host.h"
#include "feldra/MessageBoxRecorder.h"
#include "feldra/QtLocalizer.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QCoreApplication>
#include <QDir>
#include <QFocusEvent>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QTemporaryDir>

#include <memory>

// A Feldra host with one lathe part open and the Data Page on it: fresh
// settings and registry, an add-in folder of its own (with a "MachineSetups"
// folder), a recorder for the message boxes, the host's localiser in English
// or German. The part: two NC output heads, main and back spindle, a cut-off
// operation (153) with a kind-23 cut-off tool and a pick-up operation (207).
class DataPageFixture {
public:
    explicit DataPageFixture(int unitSystem = 70, int languageCode = feldra::QtLocalizer::kEnglish)
        : messages(std::make_shared<feldra::MessageBoxRecorder>()), document(std::make_shared<feldra::DocumentState>())
    {
        QDir(addIn.path()).mkpath(QStringLiteral("MachineSetups"));
        marelon::Flags() = {};
        host.App().addInFolder = addIn.path() + QLatin1Char('/');
        BuildPart(unitSystem);
        host.OpenDocument(document);
        application = host.ApplicationFor(QStringLiteral("Marelon.Connect"));
        auto localizer = std::make_shared<feldra::QtLocalizer>();
        localizer->setLanguageCode(languageCode);
        localizer->Initialise();
        marelon::InstallUiServices(localizer, messages);
        form = std::make_unique<marelon::frmMarelonDataPage>(application);
    }
    ~DataPageFixture()
    {
        form.reset();
        marelon::RemoveUiServices();
    }

    // Opens the Data Page on the part as the Data Page command does.
    void Open()
    {
        form->InitOp();
        form->show();
    }

    feldra::MachineSetupData& Setup() { return document->data.machineSetup; }

    template <class W = QWidget>
    W& Control(const QString& name) const
    {
        return form->Control<W>(name);
    }
    QLineEdit& Edit(const QString& name) const { return Control<QLineEdit>(name); }
    QComboBox& List(const QString& name) const { return Control<QComboBox>(name); }
    QString Text(const QString& name) const
    {
        if (auto* label = form->findChild<QLabel*>(name))
            return label->text();
        if (auto* list = form->findChild<QComboBox*>(name))
            return list->currentText();
        return Edit(name).text();
    }

    // Picks a model in the Machine Name list, as the user does.
    void SelectModel(const QString& model)
    {
        QComboBox& list = List(QStringLiteral("cmbMachineName"));
        if (list.count() == 0)
            list.addItems(marelon::MachineModelNames(false));
        form->SelectList(list, list.findText(model));
    }

    // Types a text into a field and leaves it.
    void Type(const QString& field, const QString& text)
    {
        QLineEdit& edit = Edit(field);
        edit.setText(text);
        QFocusEvent leave(QEvent::FocusOut, Qt::TabFocusReason);
        form->show();
        QCoreApplication::sendEvent(&edit, &leave);
    }

    // Fills every checked field with a value that passes OK's check.
    void FillValid()
    {
        for (const char* field : {"txt814", "txt815", "txt816", "txt818", "txt820", "txt821", "txt824", "txt990",
                                  "txt991", "txt992", "txtStartupSpeed", "txtDwell", "txtColletExt", "TxtChamferDistX",
                                  "TxtChamferDistZ", "TxtPullBackAmount", "TxtSpindleRPM"})
            Edit(field).setText("1");
        Edit("txt817").setText("100");
        Edit("txt822").setText("0.002");
        Edit("txt819").setText("3");
        Edit("txt813").setText("20");
    }

    // A machine setup file of a model in the add-in folder.
    void AddSetupFile(const QString& model, const QString& fileName, const QByteArray& contents = "{}")
    {
        const QString folder = addIn.path() + QStringLiteral("/MachineSetups/") + model;
        QDir().mkpath(folder);
        QFile file(folder + QLatin1Char('/') + fileName);
        file.open(QIODevice::WriteOnly);
        file.write(contents);
    }

    QString Setting(const QString& key) const
    {
        return marelon::GetSetting(marelon::kAppName, QStringLiteral("Data Page Settings"), key, QStringLiteral("<none>"));
    }
    void SaveSetting(const QString& key, const QString& value) const
    {
        marelon::SaveSetting(marelon::kAppName, QStringLiteral("Data Page Settings"), key, value);
    }

    TempStores stores;
    QTemporaryDir addIn;
    feldra::Host host;
    std::shared_ptr<feldra::MessageBoxRecorder> messages;
    std::shared_ptr<feldra::DocumentState> document;
    std::shared_ptr<host::Application> application;
    std::unique_ptr<marelon::frmMarelonDataPage> form;

private:
    void BuildPart(int unitSystem)
    {
        using namespace feldra;
        document->fileName = QStringLiteral("/tmp/part.fdoc");
        DocumentData& d = document->data;
        d.unitSystem = unitSystem;
        MachineSetupData& s = d.machineSetup;
        for (const char* name : {"G821", "G820", "G811", "G810"}) {
            auto entry = std::make_shared<SetupEntryData>();
            entry->name = QString::fromLatin1(name);
            s.setupEntries.append(entry);
        }
        for (int n : {1, 2}) {
            auto spindle = std::make_shared<SpindleData>();
            spindle->number = n;
            s.spindles.append(spindle);
            auto head = std::make_shared<NCHeadData>();
            head->comment = QStringLiteral("Head %1 comment").arg(n);
            head->outputUnit = unitSystem;
            s.heads.append(head);
        }
        s.stockDiameter = 12;
        s.stockLength = 40;
        s.partLength = 30;

        auto tool = std::make_shared<ToolData>();
        tool->number = 5;
        tool->toolId = QStringLiteral("T5");
        tool->toolType = 23;
        tool->centreOffset = 10;
        tool->width = 3;
        tool->cornerCode = 13;
        d.tools.append(tool);

        auto operation = [&](int type, const QString& toolId) {
            auto op = std::make_shared<OperationData>();
            op->id = int(d.operations.size()) + 1;
            op->key = QStringLiteral("Op%1").arg(op->id);
            op->name = QStringLiteral("Operation %1").arg(op->id);
            op->technology->type = type;
            op->technology->parameters.insert(QStringLiteral("498"), {toolId, QStringLiteral("Tool"), {}});
            op->technology->parameters.insert(QStringLiteral("793"), {1, QString(), {}});
            d.operations.append(op);
            return op;
        };
        operation(153, QStringLiteral("T5"))->featureKey = QStringLiteral("F1");
        operation(207, QString())->technology->colletExtension = 3.5;

        auto feature = std::make_shared<FeatureData>();
        feature->key = QStringLiteral("F1");
        feature->elements = {{0, 0, 0}, {6, 0, -30}};
        d.features = {feature};
        auto layer = std::make_shared<LayerData>();
        layer->name = QStringLiteral("0");
        d.layers = {layer};
    }
};
