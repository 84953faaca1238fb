#pragma once

#include "engine/BrowserRollupEntry.h"
#include "engine/ProcessSample.h"
#include "platform/MachineWords.h"
#include "ui/presentation/ProgramTile.h"
#include "ui/presentation/Tint.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtQmlIntegration/qqmlintegration.h>

#include <set>

namespace swabby {

/// What a list of programs is about; it decides a row's value and the line under its name.
enum class ProcessRowMode { activity, battery, network };

/// One program as its row shows it.
struct ProcessRowText {
    Q_GADGET
    QML_VALUE_TYPE(processRowText)
    Q_PROPERTY(int pid MEMBER pid)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(swabby::ProgramTile tile MEMBER tile)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(QString value MEMBER value)
    Q_PROPERTY(bool isEmphasized MEMBER isEmphasized)
    Q_PROPERTY(double fraction MEMBER fraction)
    Q_PROPERTY(int tint READ tintIndex)
    Q_PROPERTY(int trust MEMBER trust)
    Q_PROPERTY(QString trustSymbol MEMBER trustSymbol)
    Q_PROPERTY(bool isPinned MEMBER isPinned)
    Q_PROPERTY(QString pinLabel READ pinLabel)
    Q_PROPERTY(bool canQuit MEMBER canQuit)

public:
    int pid = 0;
    QString name;
    ProgramTile tile;
    QString detail;
    QString value;
    bool isEmphasized = false;
    double fraction = 0; ///< of the bar beside the value, 0–1
    Tint tint = Tint::accent;
    int trust = 0;
    QString trustSymbol;
    bool isPinned = false;
    bool canQuit = true; ///< it is this person's, and their session does not stand on it

    int tintIndex() const { return static_cast<int>(tint); }
    /// On the button that pins it, or no longer does.
    QString pinLabel() const;
    bool operator==(const ProcessRowText &) const = default;
};

/// One browser as its row shows it.
struct BrowserRowText {
    Q_GADGET
    QML_VALUE_TYPE(browserRowText)
    Q_PROPERTY(QString name MEMBER name)
    Q_PROPERTY(QString detail MEMBER detail)
    Q_PROPERTY(QString memory MEMBER memory)
    Q_PROPERTY(QString load MEMBER load)

public:
    QString name;
    QString detail;
    QString memory;
    QString load;

    bool operator==(const BrowserRowText &) const = default;
};

/// What a program is called.
struct ProgramNames {
    QString first;  ///< by people: the application it belongs to, else what tells most
    QString second; ///< by the system; empty where that is the same
};
ProgramNames programNames(const ProcessSample &process);

ProcessRowText processRowText(const ProcessSample &process, ProcessRowMode mode, bool isPinned,
                              const MachineWords &words);
QList<ProcessRowText> processRowTexts(const QList<ProcessSample> &processes, ProcessRowMode mode,
                                      const std::set<QString> &pinnedNames, const MachineWords &words);
/// The busiest one alone, if any; its detail says what it is.
QList<ProcessRowText> topProcessTexts(const QList<ProcessSample> &processes,
                                      const std::set<QString> &pinnedNames, const MachineWords &words);
/// " · loom-helper · belongs to the system", behind another detail: its second name, and why it is not quit.
QString programRemark(const ProcessSample &process);
/// Said in place of an empty list.
QString noProcessesText(bool isKnown);
QList<BrowserRowText> browserRowTexts(const QList<BrowserRollupEntry> &entries, const MachineWords &words);

/// The star beside a trust score, filled for one that is high.
QString trustSymbol(int trustRatio);
/// "High", "Moderate" or "Low".
QString energyWord(double energyImpact);
/// "4.2 MB/s".
QString networkRate(std::int64_t bytesPerSec);

/// The letter on a program's tile: the first letter or digit of its name, or of its maker's in a name such as
/// "com.maker.program".
QString tileLetter(const QString &name);
/// Always the same for the same name, on every machine and at every start.
int tileColorIndex(const QString &name);

/// The processes one of whose names contains the text, whatever the case. A text of only blanks keeps all;
/// any other is matched as typed, its outer blanks included.
QList<ProcessSample> filteredProcesses(const QList<ProcessSample> &processes, const QString &searchText);
/// The processes, and behind them those of the others that are not among them.
QList<ProcessSample> withOthers(QList<ProcessSample> processes, const QList<ProcessSample> &others);
/// That a search has found so many more than are listed; empty for none.
QString moreFoundText(qsizetype count);

} // namespace swabby
