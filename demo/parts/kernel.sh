# shellcheck shell=bash disable=SC2154
# machine.json: what the kernel of the demo machine says, one processor reading and one thermal state for
# each minute of a day.

write_kernel_figures() {
    local used=755000 free=41216000000 charge=64 charging=false empty=174 full=-1
    case "$scenario" in
    calm) used=503000 free=262400000000 charge=96 charging=true empty=-1 full=21 ;;
    trouble) used=985000 free=17180000000 charge=11 empty=14 ;;
    esac
    # Of the pages in use 21 % are wired and 22 % compressed.
    local wired=$((used * 21 / 100)) compressed=$((used * 22 / 100))
    cat <<TEXT
{
  "now": $now,
  "userID": 501,
  "ownProcessID": 48211,
  "memory": {
    "pageSize": 16384,
    "activePages": $((used - wired - compressed)),
    "wiredPages": $wired,
    "compressorPages": $compressed,
    "physicalBytes": 17179869184,
    "swapUsedBytes": $((used > 900000 ? 6871947673 : 1288490188))
  },
  "disk": { "freeBytes": $free, "totalBytes": 494384795648 },
  "powerSource": {
    "Current Capacity": $charge,
    "Is Charging": $charging,
    "Time to Empty": $empty,
    "Time to Full Charge": $full
  },
  "runningApplications": [
    { "pid": 418, "bundleID": "com.apple.finder", "terminates": true },
    { "pid": 447, "bundleID": "com.cloudshelf.app", "terminates": true },
    { "pid": 481, "bundleID": "com.tiletidy.app", "terminates": true },
    { "pid": 1204, "bundleID": "com.google.Chrome", "terminates": true },
    { "pid": 1377, "bundleID": "com.apple.Safari", "terminates": true },
    { "pid": 1562, "bundleID": "org.mozilla.firefox", "terminates": true },
    { "pid": 10744, "bundleID": "com.framefoundry.app", "terminates": true },
    { "pid": 11302, "bundleID": "com.chartroom.app", "terminates": true },
    { "pid": 11818, "bundleID": "com.meetingpoint.app", "terminates": true },
    { "pid": 12077, "bundleID": "com.notegarden.app", "terminates": true },
    { "pid": 12544, "bundleID": "com.clippress.app", "terminates": false }
  ],
  "unsignalablePids": [1, 97, 101, 148, 176, 203, 221],
  "trashRefuses": ["$(json_text "$root/Applications/Vault Line.app")"],
  "thermalState": [$(thermal_states)],
  "cpuTicks": [
$(processor_readings)
  ]
}
TEXT
}

# A half-hour that repeats: warming up, worked too hard from minute 4 to 8, then quiet.
processor_readings() {
    awk -v scenario="$scenario" 'BEGIN {
        for (minute = 0; minute < 1440; minute++) {
            phase = minute % 30
            wave = sin(minute * 1.3)
            if (scenario == "calm") load = 11 + 4 * wave
            else if (scenario == "trouble") load = 95 + 3 * wave
            else if (phase >= 4 && phase <= 8) load = 91 + 3 * wave
            else if (phase <= 3 || phase <= 11) load = 64 + 3 * wave
            else load = 27 + 6 * wave
            # 48 000 ticks a minute: eight cores, a hundred ticks a second each.
            busy = int(480 * load)
            user += int(busy * 0.7); system_ += busy - int(busy * 0.7); idle += 48000 - busy
            printf "    [%d, %d, %d, 0]%s\n", user, system_, idle, minute < 1439 ? "," : ""
        }
    }'
}

thermal_states() {
    awk -v scenario="$scenario" 'BEGIN {
        for (minute = 0; minute < 1440; minute++) {
            phase = minute % 30
            state = "nominal"
            if (scenario == "trouble") state = "critical"
            else if (scenario == "busy" && phase >= 5 && phase <= 9) state = "serious"
            else if (scenario == "busy" && (phase == 4 || phase == 10)) state = "fair"
            printf "%s\"%s\"", minute ? ", " : "", state
        }
    }'
}
