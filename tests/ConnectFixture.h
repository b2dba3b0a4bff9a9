#pragma once

#include "HostCaptions.h"
#include "TempStores.h"
#include "addin/Connect.h"
#include "addin/host/HostError.h"
#include "feldra/Host.h"
#include "feldra/MessageBoxRecorder.h"
#include "feldra/QtLocalizer.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QStringList>
#include <QTimer>
#include <QVariantList>
#include <QWidget>

#include <functional>

inline const QString kProgId = QStringLiteral("Marelon.Connect");

// Runs a call; a modal dialog it opens is answered from inside its own event
// loop. Returns the dialog's object name, empty when the call opened none.
inline QString AnswerModal(const std::function<void()>& call, const std::function<void(QWidget&)>& answer)
{
    QString shown;
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        if (QWidget* modal = QApplication::activeModalWidget()) {
            shown = modal->objectName();
            answer(*modal);
        }
    });
    timer.start(0);
    call();
    timer.stop();
    return shown;
}

// A Feldra host with its folders in a temporary directory, the host's
// localiser in a chosen language, and the add-in connected to it (or about to be).
class ConnectedHost {
public:
    explicit ConnectedHost(int languageCode = feldra::QtLocalizer::kEnglish)
    {
        host.App().installFolder = stores.Path() + QStringLiteral("/install/");
        host.App().temporaryFolder = stores.Path() + QStringLiteral("/temp/");
        host.App().languageCode = languageCode;
        QDir().mkpath(host.App().temporaryFolder);
        host.Services().createLocalizer = [] { return std::make_shared<feldra::QtLocalizer>(); };
    }

    void Connect()
    {
        QVariantList custom;
        addIn.OnConnection(host.ApplicationFor(kProgId), host::ext_cm_Startup, QVariant(), custom);
    }
    void Disconnect()
    {
        QVariantList custom;
        addIn.OnDisconnection(host::ext_dm_UserClosed, custom);
    }

    // A new document of the machine type with the named work planes and NC output heads.
    std::shared_ptr<feldra::DocumentState> Document(int machineType = 1, const QStringList& planes = {},
                                                    int heads = 1)
    {
        auto document = std::make_shared<feldra::DocumentState>();
        document->data.machineType = machineType;
        for (const QString& name : planes) {
            document->data.workPlanes.append(std::make_shared<feldra::WorkPlaneData>());
            document->data.workPlanes.last()->name = name;
        }
        for (int i = 0; i < heads; ++i)
            document->data.machineSetup.heads.append(std::make_shared<feldra::NCHeadData>());
        return document;
    }

    QStringList BarCaptions(int bar) { return Captions(host.App().CommandBar(bar)->controls); }
    QStringList HelpMenu() { return Captions(host.App().Menu(9)->entries); }

    // Creates an (empty) help file in the host's help folder of a language.
    void AddHelpFile(const QString& file, int language = 1033)
    {
        const QString folder = host.App().installFolder + QStringLiteral("Help/%1/").arg(language);
        QDir().mkpath(folder);
        QFile(folder + file).open(QIODevice::WriteOnly);
    }

    TempStores stores;
    feldra::Host host;
    marelon::Connect addIn; // released before the host goes
};
