#pragma once

// Switches of the library's lifecycle that hosts never touch; tests reach them through this header.

#include <cstddef>

namespace vorn {
namespace core {

// The controller's trace lines on standard output, off unless set here.
void setLibraryInitTrace(bool on);
bool libraryInitTrace();

// One dependency library of VornParametersQt4Init: its init and deinit entry points.
struct LibraryDependency
{
    void (*init)();
    void (*deinit)();
};

// The dependencies VornParametersQt4Init initialises, in order: the core, parameter and generic model
// libraries.
const LibraryDependency* libraryDependencies(std::size_t* count);

// Replaces the dependency list (null restores the libraries'), so that a test can watch the entry points
// call them. Only while no other thread is inside the entry points.
void setLibraryDependencies(const LibraryDependency* dependencies, std::size_t count);

} // namespace core
} // namespace vorn
