#ifndef HOST_IBASEINTERFACE_H
#define HOST_IBASEINTERFACE_H

//! Root of the host interfaces. Called by table: the order is fixed, new operations get a new
//! interface. GUI thread only. The implementation owns itself; the host never deletes through this
//! type.
class IBaseInterface
{
public:
    virtual ~IBaseInterface() { }
    //! Gives the object back. An object that lives as long as the process does nothing here.
    virtual void Release() = 0;
    //! Code of the last failure; 0 when there is none or the object keeps none.
    virtual int GetLastError() = 0;
};

#endif // HOST_IBASEINTERFACE_H
