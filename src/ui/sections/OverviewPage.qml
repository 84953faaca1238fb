pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// How the machine is doing right now; what is wrong comes before the figures.
ScrollPage {
    id: page

    required property MainWindowView view

    HeroCard {
        width: parent.width
        view: page.view
    }

    IssueStack {
        width: parent.width
        view: page.view
        issues: page.view.state.issues
    }

    Repeater {
        model: page.view.state.leaks

        LeakBanner {
            width: parent.width
            onExplained: page.view.explainProcess(entry.pid)
            onQuitted: page.view.quitProcess(entry.pid)
        }
    }

    Grid {
        id: gauges

        readonly property int inOneRow: page.view.state.gauges.count
        readonly property bool isTight: (width - 12 * (inOneRow - 1)) / inOneRow < 150

        // Whole pixels, so that the last card ends where the cards above and below do.
        function edge(column: int): real {
            return Math.round(column * (width + 12) / columns);
        }

        width: parent.width
        columns: isTight ? 2 : inOneRow
        spacing: 12

        Repeater {
            model: page.view.state.gauges

            GaugeCard {
                width: gauges.edge(index % gauges.columns + 1) - gauges.edge(index % gauges.columns) - 12
            }
        }
    }

    SpeedHistoryCard {
        width: parent.width
        figures: page.view.state
    }

    TopProcessCard {
        width: parent.width
        view: page.view
    }
}
