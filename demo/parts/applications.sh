# shellcheck shell=bash disable=SC2154
# Installed applications with what they leave in the Library.

write_applications() {
    local system=$root/Applications own=$home/Applications library=$home/Library
    application "$system/Frame Foundry.app" com.framefoundry.app 'Frame Foundry' 36 20 5
    application "$system/Chart Room.app" com.chartroom.app 'Chart Room' 20 10
    application "$system/Meeting Point.app" com.meetingpoint.app 'Meeting Point' 20 3
    application "$system/Cloud Shelf.app" com.cloudshelf.app 'Cloud Shelf' 10 5
    application "$system/Tile Tidy.app" com.tiletidy.app 'Tile Tidy' 3
    application "$system/Vault Line.app" com.vaultline.app 'Vault Line' 10 2
    application "$system/Google Chrome.app" com.google.Chrome 'Google Chrome' 36 10 2
    application "$system/Firefox.app" org.mozilla.firefox Firefox 20 10 5
    application "$own/Note Garden.app" com.notegarden.app 'Note Garden' 5 2
    application "$own/Clip Press.app" com.clippress.app 'Clip Press' 10
    cp "$system/Cloud Shelf.app/Contents/MacOS/Cloud Shelf" \
        "$system/Cloud Shelf.app/Contents/MacOS/Cloud Shelf Sync"
    # A folder that only looks like an application is not listed.
    mkdir -p "$system/Half Copied.app/Contents"

    fill "$library/Application Support/Frame Foundry/Templates" 10 3
    text "$library/Preferences/com.framefoundry.app.plist" 4 'kept settings'
    text "$library/Saved Application State/com.framefoundry.app.savedState/windows.plist" 12 'open windows'
    text "$library/Logs/Frame Foundry/render.log" 220 'rendered one frame'
    text "$library/HTTPStorages/com.framefoundry.app/store" 48 'a cookie'
    text "$library/WebKit/com.framefoundry.app/WebsiteData" 64 'a page'
    fill "$library/Containers/com.framefoundry.app/Data" 5
    fill "$library/Application Support/Chart Room" 5 2
    text "$library/Preferences/com.chartroom.app.plist" 3 'kept settings'
    fill "$library/Containers/com.notegarden.app/Data" 3 2
}

# application BUNDLE IDENTIFIER NAME SIZE…
application() {
    local bundle=$1 identifier=$2 name=$3
    shift 3
    fill "$bundle/Contents/Resources" "$@"
    mkdir -p "$bundle/Contents/MacOS"
    printf '#!/bin/sh\n' >"$bundle/Contents/MacOS/$name"
    chmod +x "$bundle/Contents/MacOS/$name"
    property_list >"$bundle/Contents/Info.plist" <<TEXT
    <key>CFBundleIdentifier</key>
    <string>$identifier</string>
    <key>CFBundleName</key>
    <string>$name</string>
    <key>CFBundleExecutable</key>
    <string>$name</string>
TEXT
}

# property_list: the dictionary entries on the standard input in a whole property list.
property_list() {
    cat <<'TEXT'
<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
TEXT
    cat
    printf '</dict>\n</plist>\n'
}
