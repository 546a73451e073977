#ifndef HOST_IDESTROYEVENT_H
#define HOST_IDESTROYEVENT_H

//! Tells a plug-in that the host is about to end. Called by table: the order is fixed. GUI thread.
class IDestroyEvent
{
public:
    virtual ~IDestroyEvent() { }
    //! Tears down what the plug-in built. Later calls of other operations are harmless.
    virtual void OnDestroy() = 0;
};

#endif // HOST_IDESTROYEVENT_H
