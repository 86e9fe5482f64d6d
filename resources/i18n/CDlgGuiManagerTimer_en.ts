<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgGuiManagerTimer</name>
    <message>
        <source>新建时间轴</source>
        <translation>New Timebar</translation>
    </message>
    <message>
        <source>置顶</source>
        <translation>Set Top</translation>
    </message>
    <message>
        <source>置底</source>
        <translation>Set Bottom</translation>
    </message>
    <message>
        <source>复制</source>
        <translation>Copy</translation>
    </message>
    <message>
        <source>上移</source>
        <translation>Up</translation>
    </message>
    <message>
        <source>下移</source>
        <translation>Down</translation>
    </message>
    <message>
        <source>删除</source>
        <translation>Delete</translation>
    </message>
    <message>
        <source>注意：以上列表的顺序决定了时间轴对物体的影响顺序，如果同一个物体被几个时间轴同时控制的时候，那么以列表上方的时间轴为实际结果！</source>
        <translation>Note: the order of this list decides which timebar wins. Where several timebars control one object at the same time, the timebar higher in the list decides the result!</translation>
    </message>
</context>
</TS>
