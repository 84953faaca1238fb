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
    <key>CFBundleIconFile</key>
    <string>AppIcon</string>
TEXT
    write_icon "$name" "$bundle/Contents/Resources/AppIcon.icns"
}

# write_icon NAME FILE: the icon file of the pictures that were drawn of that application (from the drawing
# beside them: rsvg-convert -w 64 NAME.svg); none for an application that nobody drew.
write_icon() {
    local picture file=$2 small large
    picture=$here/icons/$(tr 'A-Z ' 'a-z-' <<<"$1")
    small=$picture-64.png large=$picture-128.png
    [[ -e $small ]] || return 0
    local small_size=$(($(wc -c <"$small") + 8)) large_size=$(($(wc -c <"$large") + 8))
    {
        icon_entry icns $((8 + small_size + large_size))
        icon_entry ic12 "$small_size"
        cat "$small"
        icon_entry ic07 "$large_size"
        cat "$large"
    } >"$file"
}

# icon_entry TYPE LENGTH: what begins an entry of an icon file, its length in four bytes included.
icon_entry() {
    local octal
    printf -v octal '\\%03o' $(($2 >> 24 & 255)) $(($2 >> 16 & 255)) $(($2 >> 8 & 255)) $(($2 & 255))
    printf "%s$octal" "$1"
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
