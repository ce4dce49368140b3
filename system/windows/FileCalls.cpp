#include "system/windows/FileCalls.h"

namespace zd::sys {

UINT FileCalls::GetWindowsDirectoryA(LPSTR buffer, UINT size) {
    return ::GetWindowsDirectoryA(buffer, size);
}
BOOL FileCalls::CreateDirectoryA(LPCSTR path, LPSECURITY_ATTRIBUTES attributes) {
    return ::CreateDirectoryA(path, attributes);
}
HFILE FileCalls::OpenFile(LPCSTR path, LPOFSTRUCT record, UINT style) {
    return ::OpenFile(path, record, style);
}
BOOL FileCalls::DeleteFileA(LPCSTR path) {
    return ::DeleteFileA(path);
}
// The few ways the game opens a file differ only in access, sharing and
// disposition; none needs security attributes, flags or a template.
HANDLE FileCalls::CreateFileA(LPCSTR path, DWORD access, DWORD share, DWORD disposition) {
    return ::CreateFileA(path, access, share, nullptr, disposition, FILE_ATTRIBUTE_NORMAL, nullptr);
}
BOOL FileCalls::ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD got) {
    return ::ReadFile(file, buffer, size, got, nullptr);
}
BOOL FileCalls::WriteFile(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD written) {
    return ::WriteFile(file, buffer, size, written, nullptr);
}
BOOL FileCalls::FlushFileBuffers(HANDLE file) {
    return ::FlushFileBuffers(file);
}
BOOL FileCalls::CloseHandle(HANDLE handle) {
    return ::CloseHandle(handle);
}
BOOL FileCalls::MoveFileExA(LPCSTR from, LPCSTR to, DWORD flags) {
    return ::MoveFileExA(from, to, flags);
}
// The lock covers the whole file, whatever its size.
BOOL FileCalls::LockFileEx(HANDLE file, DWORD flags, LPOVERLAPPED overlapped) {
    return ::LockFileEx(file, flags, 0, MAXDWORD, MAXDWORD, overlapped);
}
BOOL FileCalls::UnlockFileEx(HANDLE file, LPOVERLAPPED overlapped) {
    return ::UnlockFileEx(file, 0, MAXDWORD, MAXDWORD, overlapped);
}

}  // namespace zd::sys
