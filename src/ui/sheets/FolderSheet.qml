pragma ComponentBehavior: Bound
import QtQuick
import Swabby.Ui

// A folder to keep is looked for, one folder after the other.
Sheet {
    id: sheet

    required property SettingsView view
    readonly property FolderView folder: view.folder

    implicitWidth: 420
    // However many folders there are: what is pressed stays where it is.
    height: Math.min(400, (parent?.parent?.height ?? 640) - 48)
    headerHeight: 40
    name: "Choose a folder to keep"
    onConfirmed: folder.choose()

    header: [
        SymbolButton {
            id: up

            anchors.verticalCenter: parent.verticalCenter
            symbol: "arrow.up"
            tip: "The folder above"
            isAvailable: !sheet.folder.isTop
            opacity: isAvailable ? 1 : 0.4
            onActivated: sheet.folder.leave()
        },
        Column {
            anchors.left: up.right
            anchors.leftMargin: 8
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter

            PlainLabel {
                width: parent.width
                text: sheet.name
                font: Theme.headingFont
                Accessible.role: Accessible.Heading
            }

            Remark {
                width: parent.width
                text: sheet.folder.path
                elide: Text.ElideMiddle
            }
        }
    ]

    CenteredLabel {
        topPadding: 12
        bottomPadding: 12
        text: sheet.folder.remark
        visible: text !== ""
    }

    RowStack {
        width: parent.width
        rows: sheet.folder.folders
        rowHeight: 32

        Pressable {
            id: row

            required property folderRow entry

            implicitHeight: 32
            name: entry.name
            onActivated: sheet.folder.enter(entry.name)

            Rectangle {
                anchors.fill: parent
                radius: row.innerRadius
                color: row.isHovered ? Theme.quietFill : "transparent"
            }

            SymbolItem {
                x: 8
                anchors.verticalCenter: parent.verticalCenter
                name: "folder"
                color: Theme.secondary
            }

            PlainLabel {
                x: 32
                width: parent.width - 40
                anchors.verticalCenter: parent.verticalCenter
                text: row.entry.name
                Accessible.ignored: true
            }
        }
    }

    footer: [
        Row {
            anchors.right: parent.right
            anchors.verticalCenter: parent.verticalCenter
            spacing: 8

            ActionButton {
                text: "Cancel"
                onActivated: sheet.dismissed()
            }

            ActionButton {
                text: "Keep this folder"
                isProminent: true
                isAvailable: sheet.folder.canBeChosen
                onActivated: sheet.folder.choose()
            }
        }
    ]
}
