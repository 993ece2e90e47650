# Locks, guards and guarded singletons of the library frame: the library's own, never installed. The
# operating system calls sit in one file per platform and purpose (Native*Windows.cpp, Native*Posix.cpp).
list(APPEND VORN_QT4_SOURCES
  platform/Guard.h
  platform/GuardedSingleton.h
  platform/GuardedSingletonBase.cpp
  platform/GuardedSingletonBase.h
  platform/NativeModule.h
  platform/NativeSync.h
  platform/ReadWriteLock.cpp
  platform/ReadWriteLock.h
  platform/ReadWriteLockGuard.cpp
  platform/ReadWriteLockGuard.h
  platform/RecursiveMutex.cpp
  platform/RecursiveMutex.h
  platform/RecursiveMutexGuard.cpp
  platform/RecursiveMutexGuard.h
  platform/SpinLockVariableGuard.cpp
  platform/SpinLockVariableGuard.h)
if(WIN32)
  list(APPEND VORN_QT4_SOURCES platform/NativeModuleWindows.cpp platform/NativeSyncWindows.cpp)
else()
  list(APPEND VORN_QT4_SOURCES platform/NativeModulePosix.cpp platform/NativeSyncPosix.cpp)
endif()
