<?xml version="1.0" encoding="utf-8"?>
<!DOCTYPE TS>
<TS version="2.1" language="en" sourcelanguage="zh_CN">
<context>
    <name>CDlgPropTimerModelKeyFrameProperties</name>
    <message>
        <source>关 键 帧 属  性</source>
        <translation>Key</translation>
    </message>
    <message>
        <source>时间定位</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>组号</source>
        <translation>Group</translation>
    </message>
    <message>
        <source>绑定的路径</source>
        <translation>Path</translation>
    </message>
    <message>
        <source>路径百分比</source>
        <translation>Share of the path</translation>
    </message>
    <message>
        <source>路径旋转(度)：</source>
        <translation>Turn about the path (degrees):</translation>
    </message>
    <message>
        <source>确   定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取   消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>模 型 属  性</source>
        <translation>Model</translation>
    </message>
    <message>
        <source>模型显示</source>
        <translation>Shown</translation>
    </message>
    <message>
        <source>模型路径运动方向约束</source>
        <translation>In the path&#x27;s direction</translation>
    </message>
</context>
<context>
    <name>CDlgPropTimerAniModelKeyFrameProperties</name>
    <message>
        <source>关 键 帧 属  性</source>
        <translation>Key</translation>
    </message>
    <message>
        <source>时间定位</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>组号</source>
        <translation>Group</translation>
    </message>
    <message>
        <source>绑定的路径</source>
        <translation>Path</translation>
    </message>
    <message>
        <source>路径百分比</source>
        <translation>Share of the path</translation>
    </message>
    <message>
        <source>路径旋转(度)：</source>
        <translation>Turn about the path (degrees):</translation>
    </message>
    <message>
        <source>确   定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取   消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>模 型 属  性</source>
        <translation>Model</translation>
    </message>
    <message>
        <source>模型显示</source>
        <translation>Shown</translation>
    </message>
    <message>
        <source>模型路径运动方向约束</source>
        <translation>In the path&#x27;s direction</translation>
    </message>
    <message>
        <source>动画循环(次)</source>
        <translation>Loops of the animation</translation>
    </message>
</context>
<context>
    <name>CDlgPropTimerSekletonKeyFrameProperties</name>
    <message>
        <source>关 键 帧 属  性</source>
        <translation>Key</translation>
    </message>
    <message>
        <source>时间定位</source>
        <translation>Time</translation>
    </message>
    <message>
        <source>组号</source>
        <translation>Group</translation>
    </message>
    <message>
        <source>绑定的路径</source>
        <translation>Path</translation>
    </message>
    <message>
        <source>路径百分比</source>
        <translation>Share of the path</translation>
    </message>
    <message>
        <source>路径旋转(度)：</source>
        <translation>Turn about the path (degrees):</translation>
    </message>
    <message>
        <source>确   定</source>
        <translation>OK</translation>
    </message>
    <message>
        <source>取   消</source>
        <translation>Cancel</translation>
    </message>
    <message>
        <source>骨 骼 属  性</source>
        <translation>Skeleton</translation>
    </message>
    <message>
        <source>骨骼显示</source>
        <translation>Shown</translation>
    </message>
    <message>
        <source>角色路径运动方向约束</source>
        <translation>In the path&#x27;s direction</translation>
    </message>
    <message>
        <source>骨骼动作</source>
        <translation>Action</translation>
    </message>
    <message>
        <source>动作循环(次)</source>
        <translation>Loops of the action</translation>
    </message>
    <message>
        <source>角色相机控制位置</source>
        <translation>The camera leads the character</translation>
    </message>
    <message>
        <source>预览时，角色站在镜头注视的地方，背向镜头；镜头移动，角色随之行走。</source>
        <translation>In preview the character stands where the camera looks and faces away from it: it walks as the camera moves.</translation>
    </message>
</context>
</TS>
