/// @file
/// The standard feature names of a GenICam device, as nodes beside those of the applet.
#pragma once

#include <string_view>

namespace quillon::gige {

/// Categories and nodes, in the order in which a viewer shows them. NAME_Min, _Max and _Reg are the registers that
/// belong to the applet's features.
inline constexpr std::string_view StandardFeatures = R"xml(<Nodes>
<Category Name="DeviceControl"><pFeature>DeviceVendorName</pFeature><pFeature>DeviceModelName</pFeature><pFeature>DeviceVersion</pFeature><pFeature>DeviceManufacturerInfo</pFeature><pFeature>DeviceID</pFeature><pFeature>DeviceSerialNumber</pFeature><pFeature>DeviceUserID</pFeature><pFeature>DeviceTemperature</pFeature><pFeature>DeviceRefusalCode</pFeature><pFeature>DeviceRefusal</pFeature></Category>
<Category Name="ImageFormatControl"><pFeature>Width</pFeature><pFeature>Height</pFeature><pFeature>OffsetX</pFeature><pFeature>OffsetY</pFeature><pFeature>SensorWidth</pFeature><pFeature>SensorHeight</pFeature><pFeature>WidthMax</pFeature><pFeature>HeightMax</pFeature><pFeature>PixelFormat</pFeature><pFeature>ReverseX</pFeature><pFeature>ReverseY</pFeature><pFeature>TestPattern</pFeature></Category>
<Category Name="AcquisitionControl"><pFeature>AcquisitionMode</pFeature><pFeature>AcquisitionStart</pFeature><pFeature>AcquisitionStop</pFeature><pFeature>AcquisitionFrameCount</pFeature><pFeature>AcquisitionFrameRate</pFeature><pFeature>AcquisitionLineRate</pFeature><pFeature>ExposureTime</pFeature><pFeature>TriggerSelector</pFeature><pFeature>TriggerMode</pFeature><pFeature>TriggerSource</pFeature><pFeature>TriggerActivation</pFeature><pFeature>TriggerSoftware</pFeature></Category>
<Category Name="AnalogControl"><pFeature>Gain</pFeature><pFeature>BlackLevel</pFeature><pFeature>Gamma</pFeature></Category>
<Category Name="UserSetControl"><pFeature>UserSetSelector</pFeature><pFeature>UserSetLoad</pFeature><pFeature>UserSetSave</pFeature></Category>
<Category Name="TransportLayerControl"><pFeature>PayloadSize</pFeature><pFeature>TLParamsLocked</pFeature><pFeature>GevSCPSPacketSize</pFeature><pFeature>GevSCPSFireTestPacket</pFeature><pFeature>GevSCPD</pFeature><pFeature>GevTimestampTickFrequency</pFeature></Category>

<StringReg Name="DeviceVendorName"><Address>0x48</Address><Length>32</Length><AccessMode>RO</AccessMode><pPort>Device</pPort></StringReg>
<StringReg Name="DeviceModelName"><Address>0x68</Address><Length>32</Length><AccessMode>RO</AccessMode><pPort>Device</pPort></StringReg>
<StringReg Name="DeviceVersion"><Address>0x88</Address><Length>32</Length><AccessMode>RO</AccessMode><pPort>Device</pPort></StringReg>
<StringReg Name="DeviceManufacturerInfo"><Address>0xA8</Address><Length>48</Length><AccessMode>RO</AccessMode><pPort>Device</pPort></StringReg>
<StringReg Name="DeviceID"><Address>0xD8</Address><Length>16</Length><AccessMode>RO</AccessMode><pPort>Device</pPort></StringReg>
<StringReg Name="DeviceSerialNumber"><Address>0xD8</Address><Length>16</Length><AccessMode>RO</AccessMode><pPort>Device</pPort></StringReg>
<StringReg Name="DeviceUserID"><Address>0xE8</Address><Length>16</Length><AccessMode>RW</AccessMode><pPort>Device</pPort></StringReg>
<Float Name="DeviceTemperature"><Description>Of the FPGA</Description><pValue>FG_SYSTEMMONITOR_FPGA_TEMPERATURE</pValue><Unit>C</Unit></Float>
<Integer Name="DeviceRefusalCode"><Description>The applet's code of the last value that it has refused; 0: none yet</Description><pValue>DeviceRefusalCode_Reg</pValue></Integer>
<IntReg Name="DeviceRefusalCode_Reg"><Address>0x20100</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Signed</Sign><Endianess>BigEndian</Endianess></IntReg>
<StringReg Name="DeviceRefusal"><Description>What was refused last, and why</Description><Address>0x20200</Address><Length>512</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable></StringReg>

<Integer Name="Width"><pValue>FG_WIDTH_Reg</pValue><pMin>FG_WIDTH_Min</pMin><pMax>FG_WIDTH_Max</pMax><pInc>FG_WIDTH_Inc</pInc></Integer>
<Integer Name="Height"><pValue>FG_HEIGHT_Reg</pValue><pMin>FG_HEIGHT_Min</pMin><pMax>FG_HEIGHT_Max</pMax><pInc>FG_HEIGHT_Inc</pInc></Integer>
<Integer Name="OffsetX"><pValue>FG_XOFFSET_Reg</pValue><pMin>FG_XOFFSET_Min</pMin><pMax>FG_XOFFSET_Max</pMax><pInc>FG_XOFFSET_Inc</pInc></Integer>
<Integer Name="OffsetY"><pValue>FG_YOFFSET_Reg</pValue><pMin>FG_YOFFSET_Min</pMin><pMax>FG_YOFFSET_Max</pMax><pInc>FG_YOFFSET_Inc</pInc></Integer>
<Integer Name="SensorWidth"><pValue>FG_SENSORWIDTH</pValue></Integer>
<Integer Name="SensorHeight"><pValue>FG_SENSORHEIGHT</pValue></Integer>
<Integer Name="WidthMax"><pValue>FG_WIDTH_Max</pValue></Integer>
<Integer Name="HeightMax"><pValue>FG_HEIGHT_Max</pValue></Integer>
<Boolean Name="ReverseX"><Description>FG_VANTAGEPOINT on the right</Description><pValue>ReverseX_Reg</pValue></Boolean>
<IntReg Name="ReverseX_Reg"><Address>0x20080</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
<Boolean Name="ReverseY"><Description>FG_VANTAGEPOINT at the bottom</Description><pValue>ReverseY_Reg</pValue></Boolean>
<IntReg Name="ReverseY_Reg"><Address>0x20090</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
<Enumeration Name="TestPattern"><Description>The camera simulator in place of the camera</Description><EnumEntry Name="Off"><Value>0</Value></EnumEntry><EnumEntry Name="GreyHorizontalRamp"><Value>1</Value></EnumEntry><EnumEntry Name="GreyVerticalRamp"><Value>2</Value></EnumEntry><EnumEntry Name="GreyDiagonalRamp"><Value>3</Value></EnumEntry><pValue>TestPattern_Reg</pValue></Enumeration>
<IntReg Name="TestPattern_Reg"><Address>0x200A0</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>

<Enumeration Name="AcquisitionMode"><EnumEntry Name="Continuous"><Value>0</Value></EnumEntry><EnumEntry Name="SingleFrame"><Value>1</Value></EnumEntry><EnumEntry Name="MultiFrame"><Value>2</Value></EnumEntry><pValue>AcquisitionMode_Reg</pValue></Enumeration>
<IntReg Name="AcquisitionMode_Reg"><Address>0x20020</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
<Command Name="AcquisitionStart"><pValue>AcquisitionStart_Reg</pValue><CommandValue>1</CommandValue></Command>
<IntReg Name="AcquisitionStart_Reg"><Address>0x20030</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
<Command Name="AcquisitionStop"><pValue>AcquisitionStop_Reg</pValue><CommandValue>1</CommandValue></Command>
<IntReg Name="AcquisitionStop_Reg"><Address>0x20040</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
<Integer Name="AcquisitionFrameCount"><Description>Frames of the mode MultiFrame</Description><pValue>AcquisitionFrameCount_Reg</pValue><Min>1</Min><Max>2147483647</Max></Integer>
<IntReg Name="AcquisitionFrameCount_Reg"><Address>0x20050</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
<Float Name="AcquisitionFrameRate"><Description>Of the lines and the height of the frames</Description><pValue>AcquisitionFrameRate_Reg</pValue><pMin>AcquisitionFrameRate_Min</pMin><pMax>AcquisitionFrameRate_Max</pMax><Unit>Hz</Unit></Float>
<FloatReg Name="AcquisitionFrameRate_Reg"><Address>0x200C0</Address><Length>8</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Endianess>BigEndian</Endianess></FloatReg>
<FloatReg Name="AcquisitionFrameRate_Min"><Address>0x20130</Address><Length>8</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Endianess>BigEndian</Endianess></FloatReg>
<FloatReg Name="AcquisitionFrameRate_Max"><Address>0x20140</Address><Length>8</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Endianess>BigEndian</Endianess></FloatReg>
<Float Name="AcquisitionLineRate"><Description>Of FG_LINEPERIODE, or of the camera simulator while it is on</Description><pValue>AcquisitionLineRate_Reg</pValue><pMin>AcquisitionLineRate_Min</pMin><pMax>AcquisitionLineRate_Max</pMax><Unit>Hz</Unit></Float>
<FloatReg Name="AcquisitionLineRate_Reg"><Address>0x200B0</Address><Length>8</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Endianess>BigEndian</Endianess></FloatReg>
<FloatReg Name="AcquisitionLineRate_Min"><Address>0x20110</Address><Length>8</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Endianess>BigEndian</Endianess></FloatReg>
<FloatReg Name="AcquisitionLineRate_Max"><Address>0x20120</Address><Length>8</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Endianess>BigEndian</Endianess></FloatReg>
<Float Name="ExposureTime"><Description>Of a line</Description><pValue>FG_LINEEXPOSURE_Reg</pValue><pMin>FG_LINEEXPOSURE_Min</pMin><pMax>FG_LINEEXPOSURE_Max</pMax><Unit>us</Unit></Float>
<Enumeration Name="TriggerSelector"><EnumEntry Name="FrameStart"><Value>0</Value></EnumEntry><Value>0</Value></Enumeration>
<Enumeration Name="TriggerMode"><Description>Off: FREE_RUN; On: ASYNC_TRIGGER, or the mode of FG_IMGTRIGGERMODE</Description><EnumEntry Name="Off"><Value>0</Value></EnumEntry><EnumEntry Name="On"><Value>1</Value></EnumEntry><pValue>TriggerMode_Reg</pValue></Enumeration>
<IntReg Name="TriggerMode_Reg"><Address>0x20070</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
<Enumeration Name="TriggerSource"><Description>Line 0 to 7 are GPI, 8 to 11 front GPI</Description><EnumEntry Name="Software"><Value>-1</Value></EnumEntry><EnumEntry Name="Line0"><Value>0</Value></EnumEntry><EnumEntry Name="Line1"><Value>1</Value></EnumEntry><EnumEntry Name="Line2"><Value>2</Value></EnumEntry><EnumEntry Name="Line3"><Value>3</Value></EnumEntry><EnumEntry Name="Line4"><Value>4</Value></EnumEntry><EnumEntry Name="Line5"><Value>5</Value></EnumEntry><EnumEntry Name="Line6"><Value>6</Value></EnumEntry><EnumEntry Name="Line7"><Value>7</Value></EnumEntry><EnumEntry Name="Line8"><Value>16</Value></EnumEntry><EnumEntry Name="Line9"><Value>17</Value></EnumEntry><EnumEntry Name="Line10"><Value>18</Value></EnumEntry><EnumEntry Name="Line11"><Value>19</Value></EnumEntry><pValue>FG_IMGTRIGGERINSRC_Reg</pValue></Enumeration>
<Enumeration Name="TriggerActivation"><EnumEntry Name="RisingEdge"><Value>0</Value></EnumEntry><EnumEntry Name="FallingEdge"><Value>1</Value></EnumEntry><pValue>FG_IMGTRIGGERINPOLARITY_Reg</pValue></Enumeration>
<Command Name="TriggerSoftware"><pValue>FG_SENDSOFTWARETRIGGER_Reg</pValue><CommandValue>1</CommandValue></Command>

<Float Name="Gain"><Description>Of the lookup table's curve</Description><pValue>FG_PROCESSING_GAIN_Reg</pValue><pMin>FG_PROCESSING_GAIN_Min</pMin><pMax>FG_PROCESSING_GAIN_Max</pMax></Float>
<Float Name="BlackLevel"><Description>Offset of the lookup table's curve</Description><pValue>FG_PROCESSING_OFFSET_Reg</pValue><pMin>FG_PROCESSING_OFFSET_Min</pMin><pMax>FG_PROCESSING_OFFSET_Max</pMax></Float>
<Float Name="Gamma"><Description>Of the lookup table's curve</Description><pValue>FG_PROCESSING_GAMMA_Reg</pValue><pMin>FG_PROCESSING_GAMMA_Min</pMin><pMax>FG_PROCESSING_GAMMA_Max</pMax></Float>

<Enumeration Name="UserSetSelector"><EnumEntry Name="UserSet1"><Value>1</Value></EnumEntry><pValue>UserSetSelector_Reg</pValue></Enumeration>
<IntReg Name="UserSetSelector_Reg"><Address>0x200D0</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
<Command Name="UserSetLoad"><Description>The configuration file that the device was started with</Description><pValue>UserSetLoad_Reg</pValue><CommandValue>1</CommandValue></Command>
<IntReg Name="UserSetLoad_Reg"><Address>0x200E0</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
<Command Name="UserSetSave"><pValue>UserSetSave_Reg</pValue><CommandValue>1</CommandValue></Command>
<IntReg Name="UserSetSave_Reg"><Address>0x200F0</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>

<Integer Name="PayloadSize"><pValue>PayloadSize_Reg</pValue></Integer>
<IntReg Name="PayloadSize_Reg"><Address>0x20010</Address><Length>4</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
<Integer Name="TLParamsLocked"><pValue>TLParamsLocked_Reg</pValue><Min>0</Min><Max>1</Max></Integer>
<IntReg Name="TLParamsLocked_Reg"><Address>0x20060</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
<Integer Name="GevSCPSPacketSize"><Description>Of the stream, with the heads of IP and UDP</Description><pValue>GevSCPSPacketSize_Reg</pValue><Min>220</Min><Max>9000</Max><Inc>4</Inc><Unit>B</Unit></Integer>
<MaskedIntReg Name="GevSCPSPacketSize_Reg"><Address>0xD04</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><LSB>31</LSB><MSB>16</MSB><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></MaskedIntReg>
<Command Name="GevSCPSFireTestPacket"><Description>Sends one packet of that size</Description><pValue>GevSCPSFireTestPacket_Reg</pValue><CommandValue>1</CommandValue></Command>
<MaskedIntReg Name="GevSCPSFireTestPacket_Reg"><Address>0xD04</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><LSB>0</LSB><MSB>0</MSB><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></MaskedIntReg>
<Integer Name="GevSCPD"><Description>Least delay between packets, in ticks of the timestamp</Description><pValue>GevSCPD_Reg</pValue></Integer>
<IntReg Name="GevSCPD_Reg"><Address>0xD08</Address><Length>4</Length><AccessMode>RW</AccessMode><pPort>Device</pPort><Cachable>NoCache</Cachable><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
<Integer Name="GevTimestampTickFrequency"><pValue>GevTimestampTickFrequency_Reg</pValue><Unit>Hz</Unit></Integer>
<IntReg Name="GevTimestampTickFrequency_Reg"><Address>0x93C</Address><Length>8</Length><AccessMode>RO</AccessMode><pPort>Device</pPort><Sign>Unsigned</Sign><Endianess>BigEndian</Endianess></IntReg>
</Nodes>
)xml";

}  // namespace quillon::gige
