/// @file
/// The wrapper of this applet: its tables, its state, and the dispatch of every read and write.
#pragma once

#include <array>
#include <atomic>
#include <map>
#include <string_view>

#include "design/AppletState.h"
#include "design/DesignParameters.h"
#include "engine/NameTables.h"
#include "engine/OutstandingStrings.h"
#include "engine/Subjects.h"
#include "quillon/PublicParameters.h"
#include "quillon/Vocabulary.h"
#include "support/Locks.h"
#include "wrapper/FgIxWrapper.h"

namespace quillon {

/// One wrapper per opened board. setParameter and getParameter may be called from any thread; each call holds the
/// parameter lock throughout, all design accesses included. freeParameterString may be called beside them and holds the
/// lock of the strings alone. Everything else takes no lock.
class FgIxWrapperImpl : public FgIxWrapper {
public:
    FgIxWrapperImpl();
    /// Releases the strings that were handed out and not given back.
    ~FgIxWrapperImpl() override;

    orlo::tools::logging::Logger& logger() override;
    /// Two passes over the keys: all values into the fields, unchecked, then the handlers. False if a key is missing,
    /// with nothing undone.
    bool loadState(Fg_ConfigFileParser* parser) override;
    void saveState(Fg_ConfigFileParser* parser) override;
    int processChannelToDma() override;
    int mapDmaToFormat() override;
    int setDmaAlignment() override;
    int getDmaAlignment() override;
    void buildParameterCatalogue() override;
    int setParameter(int id, const void* value, unsigned dma, FgParamTypes type) override;
    int getParameter(int id, void* value, unsigned dma, FgParamTypes type) override;
    /// `value` is a string that a read stored, whatever parameter it was read from. Throws InvalidParameter for an
    /// unknown `dma`.
    int freeParameterString(int id, void* value, unsigned dma, FgParamTypes type) override;
    int Fg_getParameterIdByName(const char* name) override;
    const char* Fg_getParameterName(int index) override;
    int Fg_getParameterId(int index) override;
    int Fg_getNrOfParameter() override;
    std::uint64_t Fg_getEventMask(const char* name) override;
    const char* Fg_getEventName(unsigned long mask) override;
    const char* vendorName() const override;
    const char* appletName() const override;
    const char* versionText() const override;
    int appletIdForSaving() const override;

    // The steps of a start, in this order, once the handles are stored.
    void buildNameTables();
    void lookUpDesignParameters();
    void setUpDesignTables();  ///< debug points, output formats and the simulator's start values
    void pushDefaultState();  ///< sends the whole start-up state; a step that fails is left out and reported by nothing
                              ///< but its log line

private:
    template <class Access>
    int dispatch(const void* value, Access&& access);
    int readRegister(int number, void* value) const;
    int writeRegister(int number, const void* value) const;
    void requireProcess(unsigned dma, int id, const char* verb);
    void getOnProcess0(int id, void* value, unsigned dma, FgParamTypes type);
    void setOnProcess0(int id, const void* value, FgParamTypes type);
    /// Of a parameter that can only be read, or that there is not.
    [[noreturn]] void refuseWrite(int id);
    [[noreturn]] void refuseUnknown(const char* verb, int id);
    void forwardToSdk(int id, void* value, unsigned dma, FgParamTypes type) const;
    void readDmaStatus(void* value) const;
    void readText(void* value, FgParamTypes type, std::string_view text);
    void readDesignText(Ix parameter, void* value, FgParamTypes type);
    void readDescription(void* value, FgParamTypes type);
    void readLut(LookupTable::Channel channel, void* value, FgParamTypes type) const;
    void writeLut(LookupTable::Channel channel, const void* value, FgParamTypes type);
    void readSimulatorCycles(void* value, bool passive);
    template <class Keys>
    void visitStateKeys(Keys& keys);

    std::atomic<orlo::tools::logging::Logger*> implLogger_{nullptr};
    orlo::templates::platform::CriticalSection parameterLock;
    std::map<int, int> processMap;  ///< from `dma` to process
    NameTables tables_;
    OutstandingStrings outstandingStrings;
    AppletState state_;
    DesignParameters design_;
    ParameterRecords records_;
    Subjects subjects_;
    std::array<char, 655'361> fieldScratchString;  ///< where a string read builds its text; written before it is read
};

}  // namespace quillon
