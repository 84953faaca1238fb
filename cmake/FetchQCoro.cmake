# QCoro from its source, of the one version named here, where no package of it is installed.
include(FetchContent)

# A function, since what QCoro is built with is no matter of the rest.
function(swabby_fetch_qcoro)
    set(beside)
    if(CMAKE_VERSION VERSION_GREATER_EQUAL 3.28)
        set(beside EXCLUDE_FROM_ALL) # so that its headers and libraries are not installed with ours
    endif()
    FetchContent_Declare(QCoro
        GIT_REPOSITORY https://github.com/danvratil/qcoro.git
        GIT_TAG ef1231ae490465b4f592ca326eee6d56a3d802ae # v0.12.0; a tag could be moved
        ${beside})
    set(USE_QT_VERSION 6)
    set(BUILD_SHARED_LIBS OFF)
    set(BUILD_TESTING OFF)
    set(QCORO_BUILD_TESTING OFF)
    # Its files were not written to be built together.
    set(CMAKE_UNITY_BUILD OFF)
    foreach(part IN ITEMS BUILD_EXAMPLES WITH_QTDBUS WITH_QTNETWORK WITH_QTWEBSOCKETS WITH_QTQUICK WITH_QML WITH_QTTEST)
        set(QCORO_${part} OFF CACHE BOOL "" FORCE)
    endforeach()
    FetchContent_MakeAvailable(QCoro)
    if(NOT TARGET QCoro6::Core)
        add_library(QCoro6::Core ALIAS QCoro6Core)
    endif()
endfunction()
swabby_fetch_qcoro()
