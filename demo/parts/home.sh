# shellcheck shell=bash disable=SC2154
# The home folder: caches, the Trash, duplicates, old projects, installers and forgotten downloads.

write_home() {
    write_caches
    write_duplicates
    write_forgotten_files
    fill "$home/Library/Developer/Xcode/DerivedData/LittleShop-bqwxkzfpjmlrdn" 10 3
    fill "$home/Library/Developer/Xcode/DerivedData/TidePool-dhsvyrkcqtgwae" 5
    text "$home/Documents/Letters/landlord.txt" 6 'Dear neighbour, the boiler is warm again.'
}

write_caches() {
    local caches=$home/Library/Caches
    fill "$home/.Trash" 5
    text "$home/.Trash/Shopping list.txt" 2 'pears, rice, soap'
    fill "$caches/com.apple.Safari" 5 2
    fill "$caches/Google/Chrome/Default/Cache" 20 10
    fill "$caches/Firefox/Profiles" 10 3
    fill "$caches/CocoaPods/Pods" 3
    fill "$caches/pip/http" 3 2
    fill "$caches/ms-playwright" 20
    fill "$caches/Yarn/v6" 2
    # Known, but too small to be worth a line.
    text "$caches/composer/files/readme.txt" 40 'small'
    # Unknown to the list, and large enough to ask about; the last one stays below that.
    fill "$caches/com.framefoundry.app/Previews" 36
    fill "$caches/com.meetingpoint.app" 20 3
    fill "$caches/Tide Charts Offline" 20 5 2
    fill "$caches/com.notegarden.app" 10
}

write_duplicates() {
    local downloads=$home/Downloads desktop=$home/Desktop
    text "$downloads/Holiday film.mov" 3800 'waves, and a dog that barks at them'
    cp "$downloads/Holiday film.mov" "$downloads/Holiday film (1).mov"
    mkdir -p "$desktop"
    cp "$downloads/Holiday film.mov" "$desktop/Holiday film.mov"
    text "$downloads/Rental contract.pdf" 940 'The tenant waters the lemon tree.'
    cp "$downloads/Rental contract.pdf" "$desktop/Rental contract copy.pdf"
    text "$downloads/Choir recordings.zip" 1650 'la la la'
    cp "$downloads/Choir recordings.zip" "$downloads/Choir recordings 2.zip"
    # Of the same length as another file and yet not the same.
    text "$desktop/Rental contract signed.pdf" 940 'The tenant waters the lemon trees.'
    text "$desktop/Packing list.txt" 3 'two towels, the good knife'
    aged 12 "$downloads"/*.* "$desktop"/*.*
}

write_forgotten_files() {
    local downloads=$home/Downloads project="$home/Documents/Old website"
    fill "$project/node_modules/left-over/lib" 36 10 5
    text "$project/package.json" 1 '{ "name": "old-website" }'
    aged 143 "$project"
    fill "$home/Projects/Little Shop/node_modules/tools" 36 20
    aged 61 "$home/Projects/Little Shop"
    # Worked on last week, so it is not offered.
    fill "$home/Projects/Tide Pool/node_modules/tools" 36 20 3
    aged 6 "$home/Projects/Tide Pool"

    sparse "$downloads/Frame Foundry 4.2.dmg" 612
    aged 47 "$downloads/Frame Foundry 4.2.dmg"
    sparse "$downloads/Printworks Driver.pkg" 47
    aged 212 "$downloads/Printworks Driver.pkg"
    sparse "$home/Desktop/Meeting Point.dmg" 94
    aged 3 "$home/Desktop/Meeting Point.dmg"
    sparse "$downloads/Lecture recording.mp4" 1434
    aged 321 "$downloads/Lecture recording.mp4"
    fill "$downloads/Workshop photos" 36 20 10
    aged 166 "$downloads/Workshop photos"
}
