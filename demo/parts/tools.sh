# shellcheck shell=bash disable=SC2154
# The stand-ins for the Mac's tools, and the facts they print.

write_tools() {
    mkdir -p "$root"
    cp -R "$here/tools/." "$root/"
    cp -R "$here/facts" "$machine/facts"
    echo "$now" >"$machine/facts/start"
    echo "$boot" >"$machine/facts/boot"
    echo "$scenario" >"$machine/facts/scenario"
    write_battery_report >"$machine/facts/battery-report"
    printf 'Images\t3.874GB (71%%)\nContainers\t112.5MB (38%%)\nLocal Volumes\t318.4MB (41%%)\nBuild Cache\t1.226GB\n' \
        >"$machine/facts/docker-usage"
    write_runtime 4B0E72D1-6A1C-4F0B-9A53-1F2D3C4B5A69 iOS-17-4 17.4 7310442496 203 iphonesimulator
    write_runtime 81F3C5AA-0D27-4E18-8C6B-72E9A1B0C3D4 watchOS-10-4 10.4 3984588800 96 watchsimulator
    write_runtime C97D10E6-53B4-4A2F-B8E1-0A9B8C7D6E5F iOS-18-2 18.2 8123252736 3 iphonesimulator
}

write_battery_report() {
    local capacity=88 cycles=274 condition=Normal charging=No
    case "$scenario" in
    calm) capacity=96 cycles=61 charging=Yes ;;
    trouble) capacity=64 cycles=1043 condition='Service Recommended' ;;
    esac
    cat <<TEXT
Power:

    Battery Information:

      Model Information:
          Manufacturer: DEMO
          Device Name: demo-cell-1
          Cell Revision: 2201
      Charge Information:
          Fully Charged: No
          Charging: $charging
      Health Information:
          Cycle Count: $cycles
          Condition: $condition
          Maximum Capacity: $capacity%

    Hardware Configuration:

      UPS Installed: No

TEXT
}

# write_runtime IDENTIFIER NAME VERSION BYTES DAYS-SINCE-USED PLATFORM
write_runtime() {
    local used
    used=$(date -u -d "@$((now - $5 * 86400 - 5400))" '+%Y-%m-%dT%H:%M:%SZ')
    mkdir -p "$machine/facts/runtimes"
    # No line end after the record: the listing puts a comma there.
    printf '%s' "  \"$1\" : {
    \"deletable\" : true,
    \"identifier\" : \"$1\",
    \"kind\" : \"Disk Image\",
    \"lastUsedAt\" : \"$used\",
    \"platformIdentifier\" : \"com.apple.platform.$6\",
    \"runtimeIdentifier\" : \"com.apple.CoreSimulator.SimRuntime.$2\",
    \"sizeBytes\" : $4,
    \"state\" : \"Ready\",
    \"version\" : \"$3\"
  }" >"$machine/facts/runtimes/$1.json"
}
