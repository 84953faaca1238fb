# Turns processes.table into the figures of one minute. Given: minute (since the demo's start), scenario,
# quit (pids that were ended, between blanks). Prints, with "|" between:
# pid parent cpu memory% rss-KiB energy bytes-in bytes-out seconds-after-boot command
BEGIN {
    FS = "|"; OFS = "|"
    physicalKiB = 16 * 1024 * 1024
    phase = minute % 30
    workedTooHard = scenario == "trouble" || (scenario == "busy" && phase >= 4 && phase <= 8)
    factor = scenario == "calm" ? 0.3 : 1
    # After four hours the climbing program has found its level, so that the demo can be left running.
    climbed = minute > 240 ? 240 : minute
}
/^#/ || NF < 12 { next }
index(quit, " " $1 " ") { next }
$11 == "runaway" && !workedTooHard { next }
{
    wave = sin(minute * 1.7 + $1)
    cpu = ($3 + $4 * wave) * factor
    if (cpu < 0)
        cpu = 0
    growth = scenario == "calm" ? 0 : $6
    rss = int(($5 + growth * climbed) * 1024)
    traffic = (1 + 0.4 * wave) * factor
    print $1, $2, sprintf("%.1f", cpu), sprintf("%.1f", rss / physicalKiB * 100), rss, \
        sprintf("%.1f", cpu * $7), int($8 * 1000 * traffic), int($9 * 1000 * traffic), $10, $12
}
