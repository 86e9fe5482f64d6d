<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgTopTimer</name>
    <message>
        <source>时间轴：</source>
        <translation>Timebar:</translation>
    </message>
    <message>
        <source>目标：</source>
        <translation>Target:</translation>
    </message>
    <message>
        <source>变量：</source>
        <translation>Variable:</translation>
    </message>
    <message>
        <source>锁定窗口</source>
        <translation>Lock Window</translation>
    </message>
    <message>
        <source>播放/暂停</source>
        <translation>Play/Stop</translation>
    </message>
    <message>
        <source>记录关键帧</source>
        <translation>Record Key</translation>
    </message>
    <message>
        <source>自动记录</source>
        <translation>Auto Record</translation>
    </message>
    <message>
        <source>上一处关键帧</source>
        <translation>Previous Key</translation>
    </message>
    <message>
        <source>下一处关键帧</source>
        <translation>Next Key</translation>
    </message>
    <message>
        <source>放大</source>
        <translation>Zoom In</translation>
    </message>
    <message>
        <source>缩小</source>
        <translation>Zoom Out</translation>
    </message>
    <message>
        <source>释放物体</source>
        <translation>Release Object</translation>
    </message>
    <message>
        <source>编辑旋转中心</source>
        <translation>Edit Rotation Center</translation>
    </message>
    <message>
        <source>播放速度</source>
        <translation>Speed of Playing</translation>
    </message>
    <message>
        <source>循环播放</source>
        <translation>Loop</translation>
    </message>
    <message>
        <source>关键帧表</source>
        <translation>Key Table</translation>
    </message>
</context>
</TS>
