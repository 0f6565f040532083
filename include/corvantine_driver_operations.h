/* Every operation of the interface, in the order of corvantine_driver.h, for those who load a driver library:
 * CORVANTINE_OPERATIONS(X) is X(OpenDrvr) X(GetSampleDepth) and so on. A driver does not need it. */
#ifndef CORVANTINE_DRIVER_OPERATIONS_H
#define CORVANTINE_DRIVER_OPERATIONS_H

#define CORVANTINE_OPERATIONS(X)                                                                             \
    X(OpenDrvr)                                                                                              \
    X(GetSampleDepth)                                                                                        \
    X(DrvrIssue)                                                                                             \
    X(Enumerate)                                                                                             \
    X(GetProductName)                                                                                        \
    X(GetSerialNumber)                                                                                       \
    X(GetHWRev)                                                                                              \
    X(GetPortNumber)                                                                                         \
    X(GetControllerRev)                                                                                      \
    X(SetDemoMode)                                                                                           \
    X(OpenAndReset)                                                                                          \
    X(SetTrigMaster)                                                                                         \
    X(SetDetectLine)                                                                                         \
    X(GetDetectLine)                                                                                         \
    X(Close)                                                                                                 \
    X(InitScope)                                                                                             \
    X(GetRISBand)                                                                                            \
    X(GetTriggerDACOffset)                                                                                   \
    X(GetRawChannelOffset)                                                                                   \
    X(GetOffsetDACScale)                                                                                     \
    X(SetUpFrontEnd)                                                                                         \
    X(SetOffset)                                                                                             \
    X(SetCalSource)                                                                                          \
    X(SetLEDMode)                                                                                            \
    X(SetBaseAdcClk)                                                                                         \
    X(SetDecimationRatio)                                                                                    \
    X(SetRISMode)                                                                                            \
    X(SetTriggerDelay)                                                                                       \
    X(SetTrigThresh)                                                                                         \
    X(SetTrigType)                                                                                           \
    X(SetNormTrig)                                                                                           \
    X(SetPreTrigDepth)                                                                                       \
    X(AcquisitionStart)                                                                                      \
    X(AcquisitionEnd)                                                                                        \
    X(GetAcquistionState)                                                                                    \
    X(GetTriggeredStatus)                                                                                    \
    X(GetSamplesSinceTrigger)                                                                                \
    X(GetBufferBlocksMultiChan)                                                                              \
    X(GetBufferIncremental)                                                                                  \
    X(GetBufferRIS)                                                                                          \
    X(GetSamplePeriod)                                                                                       \
    X(ReScaleSampleData)                                                                                     \
    X(MakeSampleData)                                                                                        \
    X(FFT)                                                                                                   \
    X(PortOpen)                                                                                              \
    X(CloseDrvr)

#endif
