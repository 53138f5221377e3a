#pragma once

/// On a class: its functions, static members, vtable and type information are part of the shared library's interface.
/// On a function or variable: it is. All else that the library is made of stays inside it, because the library is
/// compiled with hidden visibility.
#define VFOUNDATION_API __attribute__((visibility("default")))
