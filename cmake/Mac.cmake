# What a Mac builds in another way: parts in Objective-C++, and an application bundle for a place of installation.
enable_language(OBJCXX)
set(CMAKE_OBJCXX_STANDARD 20)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
add_compile_options($<$<COMPILE_LANGUAGE:OBJCXX>:-fobjc-arc>)

set(SWABBY_PROGRAM_FOLDER Swabby.app/Contents/MacOS)
set(SWABBY_LIBRARY_FOLDER Swabby.app/Contents/Frameworks)
set(SWABBY_ORIGIN "@loader_path")
set(SWABBY_PROGRAM_RPATH "@loader_path/../Frameworks")
set(CMAKE_MACOSX_RPATH ON)
