#ifndef PAD2IBIS_DRIVER_HOST_HOOK_H
#define PAD2IBIS_DRIVER_HOST_HOOK_H

// A function that a host installs into the generator, with the context the
// generator hands back to it: the seams (report observer, output sink,
// substitute chooser, outcome observer) each keep one. Empty until the host
// installs one; installing null empties it again.

template <class Function>
struct IbsHook {
    Function function = nullptr;
    void* context = nullptr;

    void set(Function installed, void* installedContext)
    {
        function = installed;
        context = installedContext;
    }
    explicit operator bool() const { return function != nullptr; }
};

#endif
