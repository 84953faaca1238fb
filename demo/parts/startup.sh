# shellcheck shell=bash disable=SC2154
# What starts by itself: one item of every kind that the list tells apart. The program paths are real ones,
# since they are looked at where the property list says.

write_startup_items() {
    local mine=$home/Library/LaunchAgents shared=$root/Library/LaunchAgents daemons=$root/Library/LaunchDaemons
    mkdir -p "$mine" "$shared" "$daemons"

    job "$mine/com.cloudshelf.sync.plist" com.cloudshelf.sync \
        "$root/Applications/Cloud Shelf.app/Contents/MacOS/Cloud Shelf Sync"
    program "$root/usr/local/tidy-type/tidytyped"
    job "$mine/com.tidytype.helper.plist" com.tidytype.helper "$root/usr/local/tidy-type/tidytyped" --watch-fonts
    # Its program went away with the application.
    job "$mine/com.inkwell.updater.plist" com.inkwell.updater \
        "$root/Applications/Inkwell.app/Contents/MacOS/Inkwell Updater"
    # Without a label the list shows the file's name.
    program "$root/usr/local/fonts-backup/run"
    job "$mine/fonts-backup.plist" '' "$root/usr/local/fonts-backup/run"
    # The system's own jobs are never listed, and a file that is no property list neither.
    job "$mine/com.apple.demo-relay.plist" com.apple.demo-relay "$root/usr/local/fonts-backup/run"
    echo 'half written' >"$mine/com.broken.plist"

    job "$shared/com.meetingpoint.launcher.plist" com.meetingpoint.launcher \
        "$root/Applications/Meeting Point.app/Contents/MacOS/Meeting Point" --hidden

    program "$root/Library/PrivilegedHelperTools/com.vaultline.tunneld"
    job "$daemons/com.vaultline.tunneld.plist" com.vaultline.tunneld \
        "$root/Library/PrivilegedHelperTools/com.vaultline.tunneld"
    program "$root/opt/printworks/bin/queue-monitor"
    job "$daemons/com.printworks.queue-monitor.plist" com.printworks.queue-monitor \
        "$root/opt/printworks/bin/queue-monitor" --poll 30
    program "$root/usr/libexec/timekeeperd"
    job "$daemons/net.timekeeper.daemon.plist" net.timekeeper.daemon "$root/usr/libexec/timekeeperd"
    job "$daemons/net.oldguard.scanner.plist" net.oldguard.scanner "$root/opt/oldguard/scanner"
}

program() {
    mkdir -p "$(dirname "$1")"
    printf '#!/bin/sh\n' >"$1"
    chmod +x "$1"
}

# job FILE LABEL PROGRAM ARGUMENT…
job() {
    local file=$1 label=$2 argument
    shift 2
    {
        [[ -z $label ]] || printf '    <key>Label</key>\n    <string>%s</string>\n' "$label"
        printf '    <key>ProgramArguments</key>\n    <array>\n'
        for argument in "$@"; do
            printf '        <string>%s</string>\n' "$(xml_text "$argument")"
        done
        printf '    </array>\n    <key>RunAtLoad</key>\n    <true/>\n'
    } | property_list >"$file"
}
