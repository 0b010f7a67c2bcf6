// The Options dialog on a main window. With ORVANE_SCREENSHOT set to a
// folder, options.png (the dialog with Simulator ticked) is saved there.

#include "engine/state/AppSettings.h"
#include "engine/state/TargetState.h"
#include "platform/widgets/Fonts.h"
#include "platform/DeviceAccess.h"
#include "platform/MSComm.h"
#include "platform/SettingsStore.h"
#include "ui/source/frmEditor.h"
#include "support/ui/MainFormFixture.h"
#include "support/ui/ModalPlayer.h"
#include "support/ui/ShownWindow.h"
#include "support/PseudoTerminal.h"
#include "ui/main/frmOptions.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QPlainTextEdit>

#include <grp.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace {
const QString PortError = "HC11 Board: Communication Port Error !";

// As root: the effective user and group nobody, without supplementary
// groups, for the life of the object; then root again.
struct NobodyForAWhile {
    std::vector<gid_t> groups = std::vector<gid_t>(std::max(::getgroups(0, nullptr), 0));
    NobodyForAWhile()
    {
        ::getgroups(int(groups.size()), groups.data());
        if (::setgroups(0, nullptr) != 0 || ::setegid(65534) != 0 || ::seteuid(65534) != 0)
            qFatal("cannot become nobody");
    }
    ~NobodyForAWhile()
    {
        if (::seteuid(0) != 0 || ::setegid(0) != 0 || ::setgroups(groups.size(), groups.data()) != 0)
            qFatal("cannot become root again");
    }
};

// Answers the font dialog for the life of the object, noting what it was asked.
struct FontAnswer {
    explicit FontAnswer(FontRecord font, bool confirm = true)
    {
        previous = CommonDialog::SetHandler([=, this](CommonDialog& dialog, CommonDialog::Kind) {
            asked.append(dialog);
            dialog.FontName = font.Name;
            dialog.FontSize = font.Size;
            dialog.FontBold = font.Bold;
            dialog.FontItalic = font.Italic;
            return confirm;
        });
    }
    ~FontAnswer() { CommonDialog::SetHandler(previous); }
    QList<CommonDialog> asked;
    CommonDialog::Handler previous;
};

// Opens the Options dialog from its entry: the script runs on it, and then OK or Cancel is pressed.
void PlayOptions(frmMain& form, std::function<void(frmOptions&)> script, const char* button = "cmdOK")
{
    ModalPlayer player([=](QDialog& dialog) {
        auto* options = qobject_cast<frmOptions*>(&dialog);
        QVERIFY(options);
        script(*options);
        options->findChild<QPushButton*>(button)->click();
    });
    form.Menu("mnuViewOptions")->trigger();
}
}  // namespace

class OptionsTest : public QObject {
    Q_OBJECT
private slots:
    // Panel 1 and the mode's menu entries follow the check box (the entries'
    // rules are the enable rules test's), and the port is opened anew at every
    // OK, in both modes.
    void switchToTheSimulatorAndBack()
    {
        MainFormFixture f;
        frmMain& form = f.Start();
        const int opened = f.line.OpenCount();
        const struct {
            bool simulator, chip;
        } cases[] = {{true, true}, {true, false}, {false, true}};
        for (const auto& [simulator, chip] : cases) {
            PlayOptions(form, [&](frmOptions& o) {
                o.chSimEnabled->setChecked(simulator);
                o.chSimPeripherals->setChecked(chip);
                if (simulator && chip)
                    SaveScreenshot(&o, "options.png");
            });
            QCOMPARE(form.PanelText(1), simulator ? QString("Simulator mode") : QString("HC11 Board: Ready"));
            QCOMPARE(TargetMode, simulator ? SimulatorMode : BoardMode);
            // The peripheral windows are the board's and the simulated chip's.
            QCOMPARE(SimulatePeripherals, chip);
            QCOMPARE(form.Menu("mnuViewRegTimer")->isEnabled(), !simulator || chip);
            QVERIFY(f.line.IsOpen());
        }
        QCOMPARE(f.line.OpenCount(), opened + 3);
        QVERIFY(f.boxes.boxes.isEmpty());
    }

    // The dialog opens on the settings in use. The editor's font dialog offers fixed-pitch faces, the
    // printer's all; Cancel changes nothing, fonts chosen on the way included; OK restyles every open editor.
    void fontsReachTheOpenEditorsAtOkOnly()
    {
        MainFormFixture f;
        SaveSetting("Settings", "COMPort", "3");
        SaveSetting("Settings", "ScreenFontBold", "True");
        frmMain& form = StartInSimulator(f);
        form.NewEditor();
        form.NewEditor();
        QCOMPARE(LoadedEditors().size(), 2);
        const QFont before = LoadedEditors()[0]->Text->font();
        const FontRecord screen = ScreenFont;
        const int opened = f.line.OpenCount();
        FontAnswer answer({"Orvane No Such Face", 15, false, true});
        const auto lookAndCancelEverything = [](frmOptions& o) {
            QCOMPARE(o.cbComPort->currentText() + "|" + o.lbDevice->text(), "COM 3|" + PortDevicePath(3));
            QVERIFY(o.chSimEnabled->isChecked());
            QCOMPARE(o.lbEStyle->text() + "|" + o.lbPStyle->text(), QString("Bold|Regular"));
            o.cmdESet->click();
            o.cmdPSet->click();
            o.chSimEnabled->setChecked(false);
            o.cbComPort->setCurrentIndex(0);
        };
        PlayOptions(form, lookAndCancelEverything, "cmdCancel");
        QCOMPARE(answer.asked.size(), 2);
        QVERIFY(answer.asked[0].FixedPitchOnly);
        QCOMPARE(answer.asked[0].FontName, QString("Fixedsys"));
        QVERIFY(!answer.asked[1].FixedPitchOnly);
        QCOMPARE(answer.asked[1].FontName, QString("Courier New"));
        QVERIFY(!form.Dialog.FixedPitchOnly);
        QCOMPARE(tuple(ScreenFont.Size, ScreenFont.Bold, ScreenFont.Italic), tuple(screen.Size, true, false));
        QCOMPARE(PrintFont.Size, 8.0f);
        QCOMPARE(TargetMode, SimulatorMode);
        QCOMPARE(COMPort, std::int16_t(3));
        QCOMPARE(f.line.OpenCount(), opened);
        QCOMPARE(LoadedEditors()[0]->Text->font(), before);
        QCOMPARE(form.PanelText(1), QString("Simulator mode"));

        PlayOptions(form, [](frmOptions& o) {
            o.cmdESet->click();
            QCOMPARE(o.lbEName->text() + "|" + o.lbEStyle->text() + "|" + o.lbESize->text(),
                     QString("Orvane No Such Face|Italic|15"));
            o.cmdPSet->click();
            QCOMPARE(o.lbPStyle->text(), QString("Italic"));
        });
        // The face the system lacks stays the saved name; the editors draw in a fixed-pitch one.
        QCOMPARE(ScreenFont.Name, QString("Orvane No Such Face"));
        QCOMPARE(PrintFont.Size, 15.0f);
        const QFont expected = FixedPitchFont("Orvane No Such Face", 15, false, true);
        for (frmEditor* editor : LoadedEditors()) {
            QCOMPARE(editor->Text->font().family(), expected.family());
            QCOMPARE(editor->Text->font().pointSizeF(), 15.0);
            QVERIFY(!editor->Text->font().bold() && editor->Text->font().italic());
        }
    }

    // The device chosen for COM 3 is opened at OK and kept at exit; one that
    // does not exist gives the port error in panel 1 and no message box.
    void deviceOfComThreeIsUsedAndKept()
    {
        PseudoTerminal pty;
        QVERIFY(pty.IsValid());
        const struct { QString path; QString panel; } rows[] = {
            {pty.DevicePath(), "HC11 Board: Ready"},
            {"/dev/orvane-no-such-port", PortError},
        };
        for (const auto& row : rows) {
            MainFormFixture f;
            SaveSetting("Settings", "PortDevice2", "/dev/orvane-no-such-port");
            frmMain& form = f.StartWith({});   // on the system's serial ports
            QCOMPARE(form.PanelText(1), PortError);
            PlayDialogs([&] { form.Menu("mnuViewOptions")->trigger(); }, [&](QDialog& dialog) {
                if (dialog.objectName() == "frmPortDevice") {
                    QCOMPARE(dialog.windowTitle(), QString("Device of COM 3"));
                    TypeAndPressOK(dialog, "txtDevice", row.path);
                    return;
                }
                auto& options = static_cast<frmOptions&>(dialog);
                options.cbComPort->setCurrentIndex(2);
                options.cmdDevice->click();
                QCOMPARE(options.lbDevice->text(), row.path);
                QCOMPARE(PortDevicePath(3), DefaultPortDevicePath(3));   // not before OK
                options.cmdOK->click();
            });
            QCOMPARE(form.PanelText(1), row.panel);
            QCOMPARE(form.MSComm.CommPort(), 3);
            QVERIFY(f.boxes.boxes.isEmpty());
            form.close();
            QCOMPARE(GetSetting("Settings", "PortDevice3"), row.path);
            QCOMPARE(GetSetting("Settings", "PortDevice2"), QString("/dev/orvane-no-such-port"));
            SetPortDevicePath(3, {});
        }
    }

    // A device that exists but belongs to a group the user is not in: the
    // panel's tip and the dialog's line beside the device say so and name
    // the fix. Run as root, the test gives the device to the group dialout and
    // opens it as nobody (effective ids only, taken back at once); run as a
    // user, it takes the user's own permission away.
    void refusedDeviceNamesItsGroupAndTheFix()
    {
        PseudoTerminal pty;
        QVERIFY(pty.IsValid());
        const QString path = pty.DevicePath();
        const QByteArray file = QFile::encodeName(path);
        struct stat before {};
        QCOMPARE(::stat(file.constData(), &before), 0);
        QString group;
        std::optional<NobodyForAWhile> nobody;
        if (::geteuid() == 0) {
            const ::group* dialout = ::getgrnam("dialout");
            QVERIFY(dialout);
            QCOMPARE(::chown(file.constData(), 0, dialout->gr_gid), 0);
            QCOMPARE(::chmod(file.constData(), 0660), 0);
            group = "dialout";
            nobody.emplace();
        } else {
            QCOMPARE(::chmod(file.constData(), 0), 0);
            group = QString::fromLocal8Bit(::getgrgid(before.st_gid)->gr_name);
        }
        const QString advice = QString("No permission to open %1. Add your user to the group %2, which owns it "
                                       "(sudo usermod -aG %2 $USER), then log in again").arg(path, group);
        {
            MainFormFixture f;
            frmMain& form = f.StartOn(path);
            QCOMPARE(form.PanelText(1), PortError);
            QCOMPARE(form.Panel(1)->toolTip(), advice);
            SetPortDevicePath(2, path);
            frmOptions options(form);
            QCOMPARE(options.lbDevice->text(), path + " (no permission: join the group " + group + ")");
            QCOMPARE(options.lbDevice->toolTip(), advice);
            // The board's first operation tells it in its message box too.
            form.Link().FindBoard();
            QCOMPARE(f.boxes.boxes.value(0).text, advice + " !");
        }
        nobody.reset();
        QCOMPARE(::chmod(file.constData(), 0600), 0);
        QVERIFY(!AccessRefused(path));
        QCOMPARE(WithAccessNote("COM 2", path), QString("COM 2"));
        SetPortDevicePath(2, {});
        QCOMPARE(WithAccessNote("COM 9", "/dev/orvane-no-such-port"), QString("COM 9"));   // missing is no refusal
    }
};

QTEST_MAIN(OptionsTest)
#include "frmOptions_test.moc"
