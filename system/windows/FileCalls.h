#pragma once

#include <windows.h>

namespace zd::sys {

// The Win32 calls under the data folder and the list's file, one to one
// less the arguments the game never uses, so that a test can count them or
// make one of them fail. The plain object calls the system itself.
class FileCalls {
public:
    virtual ~FileCalls() = default;

    virtual UINT GetWindowsDirectoryA(LPSTR buffer, UINT size);
    virtual BOOL CreateDirectoryA(LPCSTR path, LPSECURITY_ATTRIBUTES attributes);
    virtual HFILE OpenFile(LPCSTR path, LPOFSTRUCT record, UINT style);
    virtual BOOL DeleteFileA(LPCSTR path);
    virtual HANDLE CreateFileA(LPCSTR path, DWORD access, DWORD share, DWORD disposition);
    virtual BOOL ReadFile(HANDLE file, LPVOID buffer, DWORD size, LPDWORD got);
    virtual BOOL WriteFile(HANDLE file, LPCVOID buffer, DWORD size, LPDWORD written);
    virtual BOOL FlushFileBuffers(HANDLE file);
    virtual BOOL CloseHandle(HANDLE handle);
    virtual BOOL MoveFileExA(LPCSTR from, LPCSTR to, DWORD flags);
    virtual BOOL LockFileEx(HANDLE file, DWORD flags, LPOVERLAPPED overlapped);
    virtual BOOL UnlockFileEx(HANDLE file, LPOVERLAPPED overlapped);
};

}  // namespace zd::sys
