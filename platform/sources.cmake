# Locks, guards and guarded singletons of the library frame. The operating system calls sit in one file
# per platform and purpose (Native*Windows.cpp, Native*Posix.cpp).
list(APPEND VORN_QT4_SOURCES
  ${PROJECT_SOURCE_DIR}/platform/GuardedSingletonBase.cpp
  ${PROJECT_SOURCE_DIR}/platform/ReadWriteLock.cpp
  ${PROJECT_SOURCE_DIR}/platform/ReadWriteLockGuard.cpp
  ${PROJECT_SOURCE_DIR}/platform/RecursiveMutex.cpp
  ${PROJECT_SOURCE_DIR}/platform/RecursiveMutexGuard.cpp
  ${PROJECT_SOURCE_DIR}/platform/SpinLockVariableGuard.cpp)
if(WIN32)
  list(APPEND VORN_QT4_SOURCES
    ${PROJECT_SOURCE_DIR}/platform/NativeModuleWindows.cpp
    ${PROJECT_SOURCE_DIR}/platform/NativeSyncWindows.cpp)
else()
  list(APPEND VORN_QT4_SOURCES
    ${PROJECT_SOURCE_DIR}/platform/NativeModulePosix.cpp
    ${PROJECT_SOURCE_DIR}/platform/NativeSyncPosix.cpp)
endif()
