# QCoro from its source, of the one version named here, where no package of it is installed.
include(FetchContent)
FetchContent_Declare(QCoro
    GIT_REPOSITORY https://github.com/danvratil/qcoro.git
    GIT_TAG v0.12.0
    GIT_SHALLOW ON)
set(USE_QT_VERSION 6)
set(BUILD_SHARED_LIBS OFF)
set(BUILD_TESTING OFF)
set(QCORO_BUILD_TESTING OFF)
foreach(part IN ITEMS BUILD_EXAMPLES WITH_QTDBUS WITH_QTNETWORK WITH_QTWEBSOCKETS WITH_QTQUICK WITH_QML WITH_QTTEST)
    set(QCORO_${part} OFF CACHE BOOL "" FORCE)
endforeach()
FetchContent_MakeAvailable(QCoro)
if(NOT TARGET QCoro6::Core)
    add_library(QCoro6::Core ALIAS QCoro6Core)
endif()
