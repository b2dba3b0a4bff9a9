#pragma once

#include "TempStores.h"
#include "addin/ui/UiServices.h"
#include "feldra/DocumentState.h"
#include "feldra/Host.h"
#include "feldra/MessageBoxRecorder.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTimer>

#include <memory>

// A Feldra host with one open document for Tool Data tests: fresh settings and
// registry, an add-in folder with an empty "ToolHolders" folder, and a
// recorder for the message boxes.
class ToolDataFixture {
public:
    explicit ToolDataFixture(int unitSystem = 70)
        : messages(std::make_shared<feldra::MessageBoxRecorder>()),
          document(std::make_shared<feldra::DocumentState>())
    {
        QDir(addIn.path()).mkpath(QStringLiteral("ToolHolders"));
        host.App().addInFolder = addIn.path() + QLatin1Char('/');
        document->data.unitSystem = unitSystem;
        auto& setup = document->data.machineSetup;
        setup.makerTag = QStringLiteral("MARELON");
        setup.machineCode = QStringLiteral("7"); // "L5 16-20"
        for (int n : {1, 2}) {
            auto turret = std::make_shared<feldra::TurretData>();
            turret->number = n;
            for (int s = 1; s <= 12; ++s) {
                auto station = std::make_shared<feldra::StationData>();
                station->number = s; // the key: station s of the turret
                turret->stations.append(station);
            }
            setup.turrets.append(turret);
        }
        host.OpenDocument(document);
        application = host.ApplicationFor(QStringLiteral("Marelon.Connect"));
        marelon::InstallUiServices(nullptr, messages);
    }
    ~ToolDataFixture() { marelon::RemoveUiServices(); }

    feldra::MachineSetupData& Setup() { return document->data.machineSetup; }

    void AddSpindles(const QStringList& names)
    {
        for (const QString& name : names) {
            auto spindle = std::make_shared<feldra::SpindleData>();
            spindle->number = int(Setup().spindles.size()) + 1;
            spindle->name = name;
            Setup().spindles.append(spindle);
        }
    }

    std::shared_ptr<feldra::ToolData> AddTool(int number, int offset, int kind = 16)
    {
        auto tool = std::make_shared<feldra::ToolData>();
        tool->number = number;
        tool->toolId = QStringLiteral("Tool %1").arg(number);
        tool->toolType = kind;
        tool->unitSystem = document->data.unitSystem;
        tool->parameters.insert(QStringLiteral("121"), {offset, QString(), {}});
        document->data.tools.append(tool);
        return tool;
    }

    QString LibraryPath(const QString& fileName) const
    {
        return addIn.path() + QStringLiteral("/ToolHolders/") + fileName;
    }

    void WriteLibrary(const QString& fileName, const QByteArray& contents) const
    {
        QFile file(LibraryPath(fileName));
        file.open(QIODevice::WriteOnly);
        file.write(contents);
    }

    QByteArray ReadLibrary(const QString& fileName) const
    {
        QFile file(LibraryPath(fileName));
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    }

    TempStores stores;
    QTemporaryDir addIn;
    feldra::Host host;
    std::shared_ptr<feldra::MessageBoxRecorder> messages;
    std::shared_ptr<feldra::DocumentState> document;
    std::shared_ptr<host::Application> application;
};

// Runs an action while the next modal dialog is open.
template <class Dialog, class Act>
void whenModal(Act act)
{
    QTimer::singleShot(0, [act] {
        auto* dialog = dynamic_cast<Dialog*>(QApplication::activeModalWidget());
        if (!dialog)
            qFatal("the expected dialog is not open");
        act(*dialog);
    });
}
