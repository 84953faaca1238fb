#pragma once

#include <QtCore/QString>

#include <cstdint>

namespace swabby {

/// What to do about a program.
enum class ActionRecommendation { keep, quit, forceQuit };

/// One running program as seen by one sampling pass.
struct ProcessSample {
    std::int32_t pid = 0;
    QString name;
    QString path; ///< the whole command as the system shows it
    double cpuPercent = 0;
    double memPercent = 0;
    std::uint64_t rssBytes = 0;
    bool isApp = false;
    double energyImpact = 0;
    std::int64_t networkBytesPerSec = 0;
    bool holdsSession = false; ///< the person's session would end with it, so nobody is urged to quit it
    QString title{};           ///< as in ProcessRow: what it is known by where its name says little
    QString owner{};           ///< as in ProcessRow: whose it is, when it is not this person's

    /// Whether it is this person's, and their session does not stand on it.
    bool mayBeQuit() const { return !holdsSession && owner.isEmpty(); }
    /// How safe it is to leave the program running, 5 (hardly) to 99.
    int trustRatio() const;

    /// A row is drawn anew only when its pid or load changed, so nothing else takes part.
    bool operator==(const ProcessSample &other) const;
};

ActionRecommendation recommendation(const ProcessSample &process);

/// Why it is not quit, behind its name: "keeps your session running", "belongs to the system". Empty when it
/// may be.
QString whyNotQuit(const ProcessSample &process);

/// Whether a health action on this program goes straight to a forced quit.
bool shouldForceQuit(const ProcessSample &process);

} // namespace swabby
