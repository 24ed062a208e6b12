#pragma once

/// A heap that fails on demand, in place of the program's own. Where a sanitizer has taken that place already, it is
/// operator new alone that fails, and not what Qt's containers ask of malloc.
namespace FailingHeap {

enum class Extent { Once, FromThenOn };
/// Lets the n-th request from now on fail, and no other or all later ones too.
void failAt(int n, Extent extent);
/// Ends that; tells whether the request came.
bool hasFailed();
/// Whether the request came from within a function, given by a part of its linkage name.
bool hasFailedWithin(const char* name);
/// How many blocks are held.
int blocks();

} // namespace FailingHeap
